// SPDX-License-Identifier: MIT
#include "apps/quorin-import/import_main.h"
#include "apps/start/process.h"

int main(int count, char** words) {
    start::PrepareProcess("quorin-import");
    return NumberOf(start::StatusAfterOutput("quorin-import", importer::ImportMain(count, words)));
}
