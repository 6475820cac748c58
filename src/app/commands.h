// SPDX-License-Identifier: MIT
// Commands are plain texts: a menu item or a row of a command list passes its text to MenuEvent.
#pragma once

#include "src/text/text.h"

namespace modQuorin {

/// Runs the command of this text, in any case. An unknown text is reported in a message box; a command of another
/// screen does nothing.
void MenuEvent(const Text& text);

/// Returns why the current screen does not offer a command, for a tool that runs commands which are in no menu of the
/// screen. Returns an empty text if the screen offers it, and for an unknown command, which MenuEvent reports. While a
/// prompt is open, only Ok and Back are offered: another command would change the grids that the prompt uses.
Text CommandRefusal(const Text& text);

/// Handles a click on entry `index` (0 the caption, 1 to 5 the items) of soft menu 1 or, for any other number, 2. An
/// index outside this range is a run-time failure.
void MenuClick(std::int32_t menu, std::int32_t index);

/// Handles a click on the caption of soft menu 1 or 2: on a soft-key device it runs the menu's only command.
void MenuTitleClick(std::int32_t menu);

/// Does what OK on a cell means on the current screen.
void SelectAction(std::int32_t row, std::int32_t col);

/// Handles OK on the current cell, from a tap or the select key.
void SelectCurrentRow();

/// Leaves the current screen. Every Back calls it.
void GoBack();

} // namespace modQuorin
