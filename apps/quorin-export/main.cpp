// SPDX-License-Identifier: MIT
#include "apps/quorin-export/export_main.h"
#include "apps/start/process.h"

int main(int count, char** words) {
    start::PrepareProcess("quorin-export");
    return NumberOf(start::StatusAfterOutput("quorin-export", exporter::ExportMain(count, words)));
}
