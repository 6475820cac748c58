// SPDX-License-Identifier: MIT
// Less points where more can't be seen.
#pragma once

#include "plotting/scene.h"

#include <cstddef>
#include <vector>

namespace plotting {

/// A series of more points is reduced.
constexpr std::size_t MostPointsAsTheyAre = 2000;

/// Returns of each run of spots in one column of pixels the first, the lowest, the highest and the last, in their
/// order: the line through them covers the same pixels, and no spike is lost.
std::vector<Spot> ReducedLine(const std::vector<Spot>& spots);

/// Returns one of all spots that lie in one pixel.
std::vector<Spot> ReducedMarkers(const std::vector<Spot>& spots);

} // namespace plotting
