// SPDX-License-Identifier: MIT
// Line files and tables, compared with other programs and libraries for the same work on the same file.
#include "bench/storage_bench.h"

int main(int count, char** words) {
    std::vector<bench::Row> rows = bench::WalkRows();
    for (const auto& more : {bench::RewriteRows(), bench::DatabaseRows()})
        rows.insert(rows.end(), more.begin(), more.end());
    return bench::Main(count, words, rows);
}
