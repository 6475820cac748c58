// SPDX-License-Identifier: MIT
// A chart of series as a scene.
#pragma once

#include "plotting/scene.h"
#include "plotting/series.h"

#include <string>

namespace plotting {

/// The measures of what a chart is drawn on.
struct Look {
    double Width = 0, Height = 0;
    double Row = 0;      ///< height of a line of text
    double TitleRow = 0; ///< of the title
    double TickWidth = 0, TickHeight = 0;
    double Space = 0;     ///< between two things
    double Edge = 0;      ///< around all
    bool IsCells = false; ///< a terminal, in dots; otherwise pixels
    double WidthOf(const std::string& text, Role role) const;
};
Look PixelLook(double width, double height);
Look CellLook(int columns, int rows);

/// Returns how data is drawn if nobody says it.
Kind UsualKind(const Data& data);

/// Returns a usual size in pixels: more panels are higher.
Spot UsualSize(const Data& data, Kind kind);

/// Returns why a chart can't be drawn: too many panels, or too little room. Empty if it can.
std::string WhyNotDrawn(const Data& data, Kind kind, const Look& look);

/// REQUIRES: data that SeriesReader has finished, and that can be drawn.
Scene Draw(const Data& data, Kind kind, const Look& look);

} // namespace plotting
