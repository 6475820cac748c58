// SPDX-License-Identifier: MIT
#include "plotting/histogram.h"

#include "plotting/axes.h"

#include <algorithm>
#include <cmath>

namespace plotting {

Bins BinsOf(const std::vector<Point>& points) {
    double low = points.front().Y, high = low;
    for (const Point& point : points) {
        low = std::min(low, point.Y);
        high = std::max(high, point.Y);
    }
    if (!(high > low))
        Widen(low, high, 0);
    // the width is rounded up, which makes fewer
    const double wanted = std::clamp(1.5 * std::sqrt(static_cast<double>(points.size())), 5.0, 40.0);
    Bins bins;
    const double magnitude = std::max(std::fabs(low), std::fabs(high));
    bins.Width = RoundStep(std::max({high / wanted - low / wanted, magnitude * 1e-14, 1e-307}));
    const auto place = [&](double value) { return std::floor(value / bins.Width + 1e-9); };
    const double first = place(low);
    bins.First = first * bins.Width;
    bins.Counts.resize(static_cast<std::size_t>(place(high) - first) + 1);
    for (const Point& point : points)
        ++bins.Counts[static_cast<std::size_t>(place(point.Y) - first)];
    return bins;
}

} // namespace plotting
