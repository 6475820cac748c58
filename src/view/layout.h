// SPDX-License-Identifier: MIT
// The form's own place and size, and where the two grids and an open input field stand on it.
#pragma once

#include "src/text/text.h"

namespace modPDAUI {

/// Sizes the form, moves the grids, and lays out the current screen and any open field with all content kept. Runs on
/// load, with `desktop` true for the desktop device, and on each change of the soft keyboard or the working area.
void LayoutForm(bool desktop);

/// Shapes the grids for the current screen. With `reset` they are emptied and take the rows and columns of the screen's
/// row of the table; without it content and heights stay.
void LayoutScreen(bool reset);

} // namespace modPDAUI
