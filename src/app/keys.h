// SPDX-License-Identifier: MIT
// Translates a device's keys into actions, and distinguishes a long press from a tap by the hold timer.
#pragma once

#include "src/view/screen_table.h"

namespace modQuorin {

/// A handler that writes 0 to the key code consumes the key.
void KeyDownHandler(std::int32_t& keyCode, std::int32_t shift);
void KeyUpHandler(std::int32_t& keyCode, std::int32_t shift);

/// Returns the device key for a keyboard key that is sent to the grid: Space stands for the select key, unless a field
/// is open, where it is a character. Any other key is returned as it is.
std::int32_t KeyForGrid(std::int32_t keyCode);

/// True if Enter in a field of one line answers the open prompt, as its "Ok" does.
bool EnterAnswersPrompt();

/// Called when a press has lasted for one second: releasing it selects nothing.
void HoldTimerFired();

/// Calls the routine of a screen for a long press on a cell, which may fill and show lstHoldMenu. No screen has one.
void ShowHoldMenu(ScreenId screen, std::int32_t row, std::int32_t col);

/// Handles a choice from lstHoldMenu: runs the soft menu item that the list repeats.
void HoldMenuClicked();
/// `tag` is the tag of the list: the number of the soft menu. `index` counts from 0.
void HandleHoldMenuClick(const Text& text, const Text& tag, std::int32_t index);

/// Empties lstHoldMenu and its tag.
void HideHoldMenu();

} // namespace modQuorin
