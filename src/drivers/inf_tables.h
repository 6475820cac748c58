// SPDX-License-Identifier: MIT
// Inf tables: one row for each column of a driver's downloads, saying how it is called, shown, filled and edited.
#pragma once

#include "src/text/text.h"

namespace modQuorin {

/// Line 1 of every inf table.
inline const Text InfHeader = u"FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA";

/// Full name of a driver's inf file. The drivers table is closed afterwards. A driver that is not found gives the file
/// of the last driver there is, and the data folder itself when there is none.
Text InfPath(const Text& driver);

/// Opens an inf table; one without rows is given a blank one, behind its header. False where there is no such file.
bool OpenInfTable(const Text& path);

/// Fills InfFields from the open inf table and gives the header line of its downloads. A table without rows, and a
/// colour that is no number, are run-time failures.
Text LoadInfFields();

/// Whether any field is filled from an instrument's results.
bool AnyFieldReceivesResults();

/// Opens a driver's inf table on the record screen, made with one blank row when it is missing. Nothing for an empty
/// name.
void OpenInfEditor(const Text& driver);

} // namespace modQuorin
