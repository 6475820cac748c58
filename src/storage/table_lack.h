// SPDX-License-Identifier: MIT
// What a table lacks before it can be used. What is then made of it is the caller's to say: a list of drivers without
// rows is empty, an inf table without rows is none.
#pragma once

#include "src/text/text.h"

namespace modFileSystem {

enum class TableLack {
    Nothing,
    Rows,   ///< it has a header alone
    Header, ///< the file is there, without a line or with an empty one
    File,   ///< there is none
};

/// What the table that was opened last lacks.
TableLack LackOfTable();

/// Opens a table that is there, of the type of all data files, and says what it lacks. One without a header is looked
/// at a second time after a second: another program may be just writing it. A table that lacks its header or file is
/// not left open.
TableLack LookAtTable(const Text& fullName);

/// Makes a table of this header in the place of one that lacks it.
void MakeTable(const Text& fullName, const Text& header);

} // namespace modFileSystem
