// SPDX-License-Identifier: MIT
// Commands are plain texts: a menu item or a row of a command list hands its text to one dispatcher.
#pragma once

#include "src/text/text.h"

namespace modQuorin {

/// Runs the command of this text, in any case. A text that is no command is told in a message box; a command whose
/// screen is not the current one does nothing.
void MenuEvent(const Text& text);

/// Why a command has no place on the screen that is on show, for a tool that gives commands which no menu of the screen
/// offers; empty where it has one, and for an unknown one, which MenuEvent tells. While a prompt waits, Ok and Back
/// alone have one: another would take the grids from under it.
Text CommandRefusal(const Text& text);

/// A click on entry `index` (0 the caption, 1 to 5 the items) of soft menu 1 or, for any other number, 2. An index
/// outside is a run-time failure.
void MenuClick(std::int32_t menu, std::int32_t index);

/// A click on the caption of soft menu 1 or 2: on a soft-key device it runs the menu's one command.
void MenuTitleClick(std::int32_t menu);

/// What OK on a cell means on the current screen.
void SelectAction(std::int32_t row, std::int32_t col);

/// OK from a tap or the select key, on the current cell.
void SelectCurrentRow();

/// Leaves the current screen: every Back ends here.
void GoBack();

} // namespace modQuorin
