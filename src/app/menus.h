// SPDX-License-Identifier: MIT
// Fills the table of menus.
#pragma once

namespace modQuorin {

void AddInputMenus();       ///< for the three screens that the input layer needs
void AddApplicationMenus(); ///< all others, in the order of the table

} // namespace modQuorin
