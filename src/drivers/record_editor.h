// SPDX-License-Identifier: MIT
// One row of the open table at a time as a two-column grid, the field's name on the left, its value on the right. It
// serves the drivers table, inf tables and downloads alike.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace modQuorin {

/// Fills grdMain from the current row. Nothing without an open table.
void ShowRecord();

/// Takes changed grid values into TableValues and marks the record as changed.
void CollectRecordEdits();

/// Writes all grid values to the current row, on disk.
void SaveRecordFromGrid();

/// The values of the record that is in the grid, from its first row on.
std::vector<Text> TextsOfGrid();

/// Tells which of the values no save can store: those for which the row has no field, or all where there is no file.
void TellWhatHasNoField(const std::vector<Text>& texts);

/// Writes values to the current row, on disk. Those for which the row has no field go nowhere.
void SaveTexts(const std::vector<Text>& texts);

/// "NEXT", "PREV", "FIRST", "LAST", "NEW", "INSERT" or "DELETE", in any case. The row in hand is saved first.
void RecordCommand(const Text& command);

/// Puts a title into the first title cell and the position, such as "1/5", into the second one.
void ShowRecordTitle(const Text& title);

/// Saves what is being edited and goes where Back leads from a record.
bool LeaveRecord();

/// OK on a cell: opens the editor that the field's kind asks for.
void SelectRecordCell(std::int32_t row, std::int32_t col);

} // namespace modQuorin
