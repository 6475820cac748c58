// SPDX-License-Identifier: MIT
#include "apps/quorin-driver/commands.h"
#include "apps/start/process.h"

int main(int count, char** words) {
    start::PrepareProcess("quorin-driver");
    return NumberOf(start::StatusAfterOutput("quorin-driver", driver::DriverMain(count, words)));
}
