// SPDX-License-Identifier: MIT
// Opens a download by its driver's inf table, and lets the user choose the fields that are shown.
#pragma once

#include "src/text/text.h"

namespace modQuorin {

/// Opens a download on the record screen; a new download's file is created. If the driver receives results, the link is
/// requested. On entry `file` is a bare name, on return the full path. Does nothing if either text is empty. If the
/// driver has no inf table, the screen does not change.
void OpenDownload(const Text& driver, Text& file);

/// Fills ScrColumns with the fields of a driver, "X" for one that is shown. Leaves its inf table open.
void ShowColumnChoices(const Text& driver);

/// Sets or clears the mark of the current row.
void ToggleColumnChoice(std::int32_t row, std::int32_t col);

/// Writes the changed choices to the inf table and closes it.
void SaveColumnChoices();

} // namespace modQuorin
