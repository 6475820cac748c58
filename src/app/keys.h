// SPDX-License-Identifier: MIT
// A device's keys become the few actions there are, and the hold timer tells a long press from a tap.
#pragma once

#include "src/view/screen_table.h"

namespace modQuorin {

/// 0 written to the key code swallows the key.
void KeyDownHandler(std::int32_t& keyCode, std::int32_t shift);
void KeyUpHandler(std::int32_t& keyCode, std::int32_t shift);

/// What a key of a keyboard stands for that comes to the grid: a device has a select key, and a keyboard has Space, as
/// long as no field is open for which it is a character. Any other key is itself.
std::int32_t KeyForGrid(std::int32_t keyCode);

/// True if Enter in a field of one line answers the prompt that is open, as its "Ok" does.
bool EnterAnswersPrompt();

/// A press has lasted for a second: it selects nothing any more.
void HoldTimerFired();

/// Tells a screen that a cell was pressed long, so that it may fill and show lstHoldMenu. None does.
void ShowHoldMenu(ScreenId screen, std::int32_t row, std::int32_t col);

/// A choice from lstHoldMenu: the item of the soft menu that the list repeats.
void HoldMenuClicked();
/// `tag` is the list's: the number of the soft menu. `index` is counted from 0.
void HandleHoldMenuClick(const Text& text, const Text& tag, std::int32_t index);

/// Empties lstHoldMenu and forgets whose items it had.
void HideHoldMenu();

} // namespace modQuorin
