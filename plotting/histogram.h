// SPDX-License-Identifier: MIT
#pragma once

#include "plotting/series.h"

#include <cstddef>
#include <vector>

namespace plotting {

struct Bins {
    double First = 0; ///< lower end of the first one, a multiple of the width
    double Width = 1; ///< 1, 2 or 5 times a power of ten
    std::vector<std::size_t> Counts;
    double End() const { return First + Width * static_cast<double>(Counts.size()); }
};

/// Counts values in bins of one width; a value on an edge belongs to the higher bin. About as many bins as the square
/// root of the count, at most 42.
Bins BinsOf(const std::vector<Point>& points);

} // namespace plotting
