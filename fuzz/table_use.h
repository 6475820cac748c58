// SPDX-License-Identifier: MIT
// Reads a table with every routine that must not change it.
#pragma once

#include "fuzz/technician.h"
#include "src/storage/keyed_tables.h"

namespace fuzz {

/// Opens a table, goes through all rows, and reads each field of the rows that are long enough to have all.
inline void LookAtTable(const Text& fullName) {
    using namespace modFileSystem;
    OpenTable(fullName, u"r", u"TEXT", u"QVRN");
    const std::int32_t rows = TableRowCount();
    FirstRow();
    for (std::int32_t row = 1; row <= rows; ++row) {
        if (Table.TableValues.size() >= Table.TableColumns.size()) {
            for (const Text& column : Table.TableColumns)
                GetField(column);
        }
        NextRow();
    }
    FindRow(u"no such column=value");
    LastRow();
    PreviousRow();
    GotoRow(rows / 2);
    GotoRow(rows + 1);
    CloseTable();
}

} // namespace fuzz
