// SPDX-License-Identifier: MIT
// A chart of series as a scene.
#pragma once

#include "plotting/look.h"
#include "plotting/scene.h"
#include "plotting/series.h"

#include <string>

namespace plotting {

/// Returns how data is drawn if nobody says it.
Kind UsualKind(const Data& data);

/// Returns a usual size in pixels: more panels are higher.
Spot UsualSize(const Data& data, Kind kind);

/// Returns why a chart can't be drawn: too many panels, or too little room. Empty if it can.
std::string WhyNotDrawn(const Data& data, Kind kind, const Look& look);

/// REQUIRES: data that SeriesReader has finished, and that can be drawn.
Scene Draw(const Data& data, Kind kind, const Look& look);

} // namespace plotting
