// SPDX-License-Identifier: MIT
// One line of text at the foot of grdMain while a long operation runs; grids and menus are off meanwhile.
#pragma once

#include "src/text/text.h"

namespace modPDAUI {

/// Shows the text, painted before this returns, and disables the grids and the menus.
void ShowStatus(const Text& text);
/// Hides it and enables them. Nothing counts: the first call ends the indicator.
void HideStatus();
/// "Busy", or its end.
void ShowBusy(bool busy);

} // namespace modPDAUI
