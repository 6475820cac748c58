// SPDX-License-Identifier: MIT
// Inf tables: one row for each column of a driver's downloads, which says how the column is called, shown, filled and
// edited.
#pragma once

#include "src/text/text.h"

namespace modQuorin {

/// Line 1 of every inf table.
inline const Text InfHeader = u"FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA";

/// Returns the full name of a driver's inf file and closes the drivers table. For a driver that is not found, returns
/// the file of the last driver in the table; if the table has none, the data folder itself.
Text InfPath(const Text& driver);

/// Opens an inf table; a table without rows gets a blank one after its header. Returns false if there is no such file.
bool OpenInfTable(const Text& path);

/// Fills InfFields from the open inf table and returns the header line of its downloads. A table without rows is a
/// run-time failure, and so is a colour that is not a number.
Text LoadInfFields();

/// True if any field is filled from an instrument's results.
bool AnyFieldReceivesResults();

/// Opens a driver's inf table on the record screen; a missing table is created with one blank row. Does nothing for an
/// empty name.
void OpenInfEditor(const Text& driver);

} // namespace modQuorin
