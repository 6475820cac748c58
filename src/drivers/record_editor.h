// SPDX-License-Identifier: MIT
// Shows one row of the open table as a grid of two columns: the field's name on the left, its value on the right. It is
// used for the drivers table, inf tables and downloads.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace modQuorin {

/// Fills grdMain from the current row. Does nothing if no table is open.
void ShowRecord();

/// Copies changed grid values into TableValues and marks the record as changed.
void CollectRecordEdits();

/// Writes all grid values to the current row and to disk.
void SaveRecordFromGrid();

/// Returns the names of the record's fields in the grid, from its first row on.
std::vector<Text> NamesOfGrid();

/// Returns the values of the record in the grid, from its first row on.
std::vector<Text> TextsOfGrid();

/// Reports the values that no save can store: those for which the row has no field, or all of them if there is no file.
void TellWhatHasNoField(const std::vector<Text>& texts);

/// Writes values to the current row and to disk. Values for which the row has no field are dropped.
void SaveTexts(const std::vector<Text>& texts);

/// Runs "NEXT", "PREV", "FIRST", "LAST", "NEW", "INSERT" or "DELETE", in any case. The current row is saved first.
void RecordCommand(const Text& command);

/// Returns why GoToRecord would refuse this number now, in words for a person; empty if it would not.
Text GoToRecordRefusal(std::int32_t number);

/// Shows the record with this number, counted from 1, of the download on the screen. The current row is saved first, as
/// by a record command. Returns why it is not shown, in words for a person; empty on success. The record on the screen
/// stays if another program keeps the table locked.
Text GoToRecord(std::int32_t number);

/// Puts a title into the first title cell and the position, such as "1/5", into the second.
void ShowRecordTitle(const Text& title);

/// Saves what is being edited and opens the screen that Back leads to from a record.
bool LeaveRecord();

/// True if OK on the value of this row opens a field over it.
bool IsEditedInPlace(std::int32_t row);

/// Handles OK on a cell: opens the editor for the kind of the field.
void SelectRecordCell(std::int32_t row, std::int32_t col);

} // namespace modQuorin
