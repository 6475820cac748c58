// SPDX-License-Identifier: MIT
// A line file whose first line names its columns and whose other lines are rows of fields joined by `|`. One table is
// open at a time, with one cursor that all callers share: opening a table closes the one before it.
#pragma once

#include "src/storage/line_files.h"

#include <vector>

namespace modFileSystem {

/// The one open table. Entries of the lists are numbered from 1: entry n is at index n - 1.
struct TableState {
    FileHandle TableFile;           ///< the open file; `valid` is true while a table is open
    std::vector<Text> TableColumns; ///< column names from line 1
    std::vector<Text> TableValues;  ///< fields of the current row, as loaded or as set; the record screens write it too
    Text RowLine;                   ///< the line of the row that was loaded last, as it was in the file
    Text TableName;                 ///< bare name of the table that was asked for last, open or not
    std::int32_t TableRowIndex = 0; ///< number of the current row, from 1; 0 when closed
    std::int32_t TableRowTotal = 0; ///< number of rows; -1: not yet counted
    bool RecordDirty = false; ///< the current row differs from its file; the record screens and the capture set it
    /// True: a move of the cursor that finds the table still locked by another program after waiting leaves the row in
    /// memory and its place as they are. False: such a move stops the program. Record commands set it.
    bool RowMayStay = false;
    bool RowIsHeld = false; ///< the last move found the table locked, and the row was left
    bool RowIsAnothers =
        false; ///< the last save found that another program had changed the table; the row was not written to it
};
inline TableState Table;

/// Opens a table in mode "r" (fails if the file is missing) or "a" (creates it). "w" is changed to "a", in the caller's
/// variable too, so that no table is ever emptied. Every open table can be written to. No row is loaded. Stops the
/// program if the file exists and can't be opened.
void OpenTable(const Text& fullName, Text& mode, const Text& fileType, const Text& creator);
/// The same for a caller that does not need the changed mode.
void OpenTable(const Text& fullName, const char16_t* mode, const Text& fileType, const Text& creator);

/// Creates the file with only the header line, and opens it. The content of an existing file of that name is lost.
void CreateTable(const Text& fullName, const Text& headerLine, const char16_t* mode, const Text& fileType,
                 const Text& creator);
void CloseTable(); ///< unsaved changes are dropped

/// Returns the number of fields that both the current row and the header have; 0 if the file has no such row. Values
/// set beyond them are not saved.
std::int32_t HeldFields();

std::int32_t TableRowCount(); ///< rows without the header; -1 for a file without even a header

void FirstRow();
void LastRow();
void NextRow();
void PreviousRow();
void GotoRow(std::int32_t row); ///< rows are numbered from 1; a failed move leaves blank values and the old row number

/// Finds a row by `COLUMN=value` or `COLUMN="value"` and makes it current. Values are compared with case. Returns false
/// if there is none; the last row is current then.
bool FindRow(const Text& selection);
/// Returns the selection text for the row whose NAME is `value`.
Text NameSelection(const Text& value);

/// Returns the field of a column, named in any case; an empty text if there is no such column or no row is loaded. A
/// row too short to have that field is a run-time failure.
Text GetField(const Text& column);
/// Sets the field in the loaded row, not in the file, and marks the record as changed, even if there is no such column.
void SetField(const Text& column, const Text& value);

/// Writes the current row to the file. If another program has changed a text table meanwhile, by a rename or in place,
/// the changed file is opened, its rows are counted again, and the row is written to its place by number. If the
/// columns differ, or the line at that place is not the one that was loaded, the row is written to a scratch file and
/// the table stays as it is. A failure of SaveRow, AddRow or DeleteRow is reported to SaveWatcher. If another program
/// keeps a line database locked, the row stays in memory, with RecordDirty set, for the next save.
void SaveRow();
/// Inserts a blank row with this number, or at the end for -1, and makes it current. On failure returns false; the
/// table and its current row are as they were, and the caller must not set fields meant for the new row.
bool AddRow(std::int32_t row);
/// Deletes the current row. The row that followed it becomes current, or the last one. On failure the row stays.
void DeleteRow();

} // namespace modFileSystem
