// SPDX-License-Identifier: MIT
// How a cell of the two grids is painted. Painting is also what settles the layout: column 0 gets narrower when a
// scroll bar is needed, a row grows when its text wraps, and the row of a hidden field collapses.
#pragma once

#include "src/view/platform/canvas.h"
#include "src/view/screen_table.h"

namespace modPDAUI {

/// The version of this build, as the start screen shows it: that of the project in CMakeLists.txt.
extern const std::int32_t VersionMajor;
extern const std::int32_t VersionMinor;

/// The version line: "V 0.27". The minor number has two digits at least.
Text VersionLine(std::int32_t majorNumber, std::int32_t minorNumber);

/// One cell that is to be painted: its place in the grid and on the page, in pixels.
struct PaintedCell {
    std::int32_t Row = 0, Col = 0;
    std::int32_t X = 0, Y = 0, Width = 0, Height = 0;
    bool Selected = false;
};

/// A cell of grdMain, by the draw style of the current screen.
void DrawMainCell(platform::CellCanvas& canvas, const PaintedCell& cell);

/// A cell of grdMain on a screen with a look of its own, and the collapse of hidden fields.
void PaintScreenCell(modQuorin::ScreenId screen, platform::CellCanvas& canvas, const PaintedCell& cell);

/// A cell of a list. Both colours 0 mean the form's own, and come back holding those.
void PaintListCell(platform::CellCanvas& canvas, const PaintedCell& cell, std::int32_t& backColour,
                   std::int32_t& foreColour);

/// A cell of grdTitle, whose columns follow those of grdMain.
void PaintTitleCell(platform::CellCanvas& canvas, const PaintedCell& cell);

} // namespace modPDAUI
