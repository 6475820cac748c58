// SPDX-License-Identifier: MIT
// A text at the bottom of grdMain while a long operation runs. Grids and menus are disabled meanwhile.
#pragma once

#include "src/text/text.h"

namespace modPDAUI {

/// Shows and paints the text before it returns, and disables the grids and the menus.
void ShowStatus(const Text& text);
/// Hides the text and enables the grids and the menus. Calls of ShowStatus are not counted: the first call of
/// HideStatus hides it.
void HideStatus();
/// Shows "Busy", or hides it.
void ShowBusy(bool busy);

} // namespace modPDAUI
