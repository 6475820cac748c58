// SPDX-License-Identifier: MIT
// A line file whose first line names its columns and whose other lines are rows of fields joined by `|`. One table is
// open at a time, with one cursor that all callers share: who opens a table closes the one before it.
#pragma once

#include "src/storage/line_files.h"

#include <vector>

namespace modFileSystem {

/// The one open table. Lists are 1-based for the reader: entry n stands at n less 1.
struct TableState {
    FileHandle TableFile;           ///< the open file; `valid` tells whether a table is open
    std::vector<Text> TableColumns; ///< column names from line 1
    std::vector<Text> TableValues;  ///< fields of the current row, as loaded or as set; the record screens write it too
    Text RowLine;                   ///< the line of the row that was loaded last, as it stood in the file
    Text TableName;                 ///< bare name of the table that was asked for last, open or not
    std::int32_t TableRowIndex = 0; ///< number of the current row, from 1; 0 when closed
    std::int32_t TableRowTotal = 0; ///< number of rows; -1 not yet counted
    bool RecordDirty = false; ///< the current row differs from its file; the record screens and the capture set it
    /// A move of the cursor that finds the table locked by another program, after waiting for it, leaves the row in
    /// memory and its place as they are. Where this is false it stops the program. Record commands set it.
    bool RowMayStay = false;
    bool RowIsHeld = false;     ///< the last move has left the row so
    bool RowIsAnothers = false; ///< the last save has found another program's row in its place, and has left it there
};
inline TableState Table;

/// Opens a table in mode "r" (fails when the file is missing) or "a" (makes it); "w" is changed to "a", for the caller
/// too, so that nothing is ever cut off. Every open table can be written to. No row is loaded.
void OpenTable(const Text& fullName, Text& mode, const Text& fileType, const Text& creator);
/// The same for a mode that nobody wants back.
void OpenTable(const Text& fullName, const char16_t* mode, const Text& fileType, const Text& creator);

/// Makes the file anew, with the header line alone, and opens it. An existing file of that name is lost.
void CreateTable(const Text& fullName, const Text& headerLine, const char16_t* mode, const Text& fileType,
                 const Text& creator);
void CloseTable(); ///< unsaved changes are dropped

/// How many fields of the current row both the file and the header have: 0 where the file has no such row. What is set
/// beyond them reaches no file.
std::int32_t HeldFields();

std::int32_t TableRowCount(); ///< rows, the header not counted; -1 for a file without even a header

void FirstRow();
void LastRow();
void NextRow();
void PreviousRow();
void GotoRow(std::int32_t row); ///< rows count from 1; a failed move leaves blank values and the old row number

/// Looks for a row by `COLUMN=value` or `COLUMN="value"` and makes it current. Values match with regard to case. When
/// there is none the last row is the current one.
bool FindRow(const Text& selection);
/// The selection text of the row whose NAME is `value`.
Text NameSelection(const Text& value);

/// The field of a column, named in any case; empty where there is no such column or no row is loaded. A row too short
/// to have that field is a run-time failure.
Text GetField(const Text& column);
/// Sets it in the loaded row, not in the file, and marks the record as changed, even where there is no such column.
void SetField(const Text& column, const Text& value);

/// A text table that another program has changed meanwhile, by a rename or in place, is taken up as it is now: its rows
/// are counted anew, and the row goes to its place by number. Where the columns are others, or the line there is not
/// the one that was loaded, the row is kept in a scratch file and the table stays as it is. A save that fails is told,
/// as is a row that could not be added or deleted. Where another program keeps a line database locked the row in memory
/// stays, with RecordDirty, for the next save.
void SaveRow();
/// Adds a blank row that takes this number and is the current one then; -1 puts it at the end. False where that can't
/// be done: the table and its current row are as they were, and nothing may be set in the place of the missing row.
bool AddRow(std::int32_t row);
/// Deletes the current row; the one that followed it is current then, or the last one. A row that can't be deleted
/// stays.
void DeleteRow();

} // namespace modFileSystem
