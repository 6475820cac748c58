// SPDX-License-Identifier: MIT
// Moving to a screen: the two grids are shaped and filled, and the menu is set.
#pragma once

#include "src/view/screen_table.h"

namespace modQuorin {

/// Moves to a screen; there is no other way, except for the prompt. Moving to the current screen fills it again, and
/// also makes it the previous screen.
void GotoScreen(ScreenId id);

/// Shapes the grids, fills them and sets the menu. CurrentScreen is not changed.
void ShowScreen(ScreenId id);

/// Only calls the screen's own fill.
void FillScreen(ScreenId id);

} // namespace modQuorin
