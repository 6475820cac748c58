// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/commands.h"
#include "apps/start/process.h"

int main(int count, char** words) {
    start::PrepareProcess("quorin-journal");
    return NumberOf(start::StatusAfterOutput("quorin-journal", reader::JournalMain(count, words)));
}
