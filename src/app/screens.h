// SPDX-License-Identifier: MIT
// Fills the table of screens. This is the one place that knows every screen with all its routines: to see what a screen
// does, read its row in screens.cpp.
#pragma once

namespace modQuorin {

/// The three screens that the input layer needs, whatever the rest of start-up does.
void AddInputScreens();

/// All others, in the order of the table. Their menus must stand.
void AddApplicationScreens();

} // namespace modQuorin
