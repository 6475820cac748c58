// SPDX-License-Identifier: MIT
// Fills the table of screens. Only this module knows every screen with all its routines: to see what a screen does,
// read its row in screens.cpp.
#pragma once

namespace modQuorin {

/// Adds the three screens that the input layer needs before the rest of start-up.
void AddInputScreens();

/// Adds all others, in the order of the table. Requires that their menus have been added.
void AddApplicationScreens();

} // namespace modQuorin
