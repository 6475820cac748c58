// SPDX-License-Identifier: MIT
// A download opened through its driver's inf table, and the choice of the fields that it shows.
#pragma once

#include "src/text/text.h"

namespace modQuorin {

/// Opens a download on the record screen, its file made when it is new, and arms the link when the driver receives
/// results. `file` comes in as a bare name and goes out as the full path. Nothing happens with either text empty, and
/// the screen stays when the driver has no inf table.
void OpenDownload(const Text& driver, Text& file);

/// Fills ScrColumns with the fields of a driver, "X" for one that is shown. Its inf table is left open.
void ShowColumnChoices(const Text& driver);

/// Turns the mark of the current row over.
void ToggleColumnChoice(std::int32_t row, std::int32_t col);

/// Writes the changed choices to the inf table and closes it.
void SaveColumnChoices();

} // namespace modQuorin
