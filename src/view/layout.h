// SPDX-License-Identifier: MIT
// The place and size of the form, and of the two grids and an open input field on it.
#pragma once

#include "src/text/text.h"

namespace modPDAUI {

/// Sizes the form, moves the grids, and lays out the current screen and any open field; all content is kept. Called on
/// load, with `desktop` true for the desktop device, and on each change of the soft keyboard or the working area.
void LayoutForm(bool desktop);
inline void LayoutFormAgain() {
    LayoutForm(false);
}

/// Shapes the grids for the current screen. With `reset` they are emptied and get the number of rows and columns in the
/// screen's table row; without it content and heights are kept.
void LayoutScreen(bool reset);
inline void ShapeGrids() {
    LayoutScreen(true);
}
inline void FitGrids() {
    LayoutScreen(false);
}

} // namespace modPDAUI
