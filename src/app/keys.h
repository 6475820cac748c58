// SPDX-License-Identifier: MIT
// A device's keys become the few actions there are, and the hold timer tells a long press from a tap.
#pragma once

#include "text/text.h"

namespace modQuorin {

/// 0 written to the key code swallows the key.
void KeyDownHandler(std::int32_t& keyCode, std::int32_t shift);
void KeyUpHandler(std::int32_t& keyCode, std::int32_t shift);

/// A press has lasted for a second: it selects nothing any more.
void HoldTimerFired();

/// The place for a screen's own hold menu: what fills lstHoldMenu goes here. No screen has one.
void ShowHoldMenu(std::int32_t screen, std::int32_t row, std::int32_t col);

/// A choice from lstHoldMenu: the item of the soft menu that the list repeats.
void HoldMenuClicked();
void HandleHoldMenuClick(const Text& text);

/// Empties lstHoldMenu and forgets whose items it had.
void HideHoldMenu();

} // namespace modQuorin
