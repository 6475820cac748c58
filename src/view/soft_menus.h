// SPDX-License-Identifier: MIT
// Shows a row of the menu table on the two soft menus.
#pragma once

#include "src/view/menu_table.h"

namespace WM5Menus {

/// Shows a menu; 0 hides both soft menus. A menu with a caption and no items gets one item with that caption,
/// permanently in the table.
void ApplyMenu(modQuorin::MenuId menu);

/// Make a top-level menu a single key. An empty caption does nothing.
void SetSoftKey1(const Text& caption);
void SetSoftKey2(const Text& caption);

} // namespace WM5Menus
