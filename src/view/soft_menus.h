// SPDX-License-Identifier: MIT
// Puts a row of the menu table on the two soft menus.
#pragma once

#include "src/view/menu_table.h"

namespace WM5Menus {

/// Shows a menu; 0 takes both soft menus away. A menu with a caption and no items gets one item of that caption, in the
/// table for good.
void ApplyMenu(modQuorin::MenuId menu);

/// Make a top-level menu a single key; an empty caption does nothing.
void SetSoftKey1(const Text& caption);
void SetSoftKey2(const Text& caption);

} // namespace WM5Menus
