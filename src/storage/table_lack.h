// SPDX-License-Identifier: MIT
// What a table lacks before it can be used. What that means is decided by the caller: a list of drivers without rows is
// empty, an inf table without rows is no inf table.
#pragma once

#include "src/text/text.h"

namespace modFileSystem {

enum class TableLack {
    Nothing,
    Rows,   ///< it has only a header
    Header, ///< the file exists, and has no line or only an empty one
    File,   ///< there is no file
};

/// Returns what the table that was opened last lacks.
TableLack LackOfTable();

/// Opens an existing table of the type of all data files and returns what it lacks. If it has no header, it is opened
/// again after one second, because another program may be writing it. A table without its header or file is not left
/// open.
TableLack LookAtTable(const Text& fullName);

/// Creates a table with this header, in place of one that lacks it.
void MakeTable(const Text& fullName, const Text& header);

} // namespace modFileSystem
