// SPDX-License-Identifier: MIT
// Painting of the cells of the two grids. Painting also determines the layout: column 0 gets narrower if a scroll bar
// is needed, a row grows if its text wraps, and the row of a hidden field gets height 0.
#pragma once

#include "src/view/platform/canvas.h"
#include "src/view/screen_table.h"

namespace modPDAUI {

/// The version shown on the start screen: that of the project in CMakeLists.txt.
extern const std::int32_t VersionMajor;
extern const std::int32_t VersionMinor;

/// Returns the version line, such as "V 0.27". The minor number has two digits at least.
Text VersionLine(std::int32_t majorNumber, std::int32_t minorNumber);

/// Paints a cell of grdMain in the draw style of the current screen.
void DrawMainCell(platform::CellCanvas& canvas, const platform::PaintedCell& cell);

/// Paints a cell of grdMain on a screen that is not a list, and sets the rows of hidden fields to height 0.
void PaintScreenCell(modQuorin::ScreenId screen, platform::CellCanvas& canvas, const platform::PaintedCell& cell);

/// Paints a cell of a list. If both colours are 0, they are set to the form's own.
void PaintListCell(platform::CellCanvas& canvas, const platform::PaintedCell& cell, std::int32_t& backColour,
                   std::int32_t& foreColour);

/// Paints a cell of grdTitle, whose columns follow those of grdMain.
void PaintTitleCell(platform::CellCanvas& canvas, const platform::PaintedCell& cell);

} // namespace modPDAUI
