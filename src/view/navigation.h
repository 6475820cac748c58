// SPDX-License-Identifier: MIT
// Moving to a screen: the two grids are shaped anew, filled, and the menu is put on.
#pragma once

#include "src/view/screen_table.h"

namespace modQuorin {

/// Moves to a screen; the only way to do so. Going to the current screen fills it again, and makes it the previous
/// screen as well.
void GotoScreen(ScreenId id);

/// Shapes the grids, fills them and puts on the menu, without a change of CurrentScreen.
void ShowScreen(ScreenId id);

/// Runs the screen's own fill alone.
void FillScreen(ScreenId id);

} // namespace modQuorin
