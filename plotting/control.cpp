// SPDX-License-Identifier: MIT
#include "plotting/control.h"

#include "companion/values/statistics.h"

#include <cmath>

namespace plotting {

std::optional<ControlLimits> ControlLimitsOf(const std::vector<Point>& points) {
    constexpr double RangeOfTwo = 1.128; // expected range of two values, in standard deviations
    values::Statistics all, ranges;
    for (std::size_t i = 0; i < points.size(); ++i) {
        all.Take(points[i].Y);
        if (i > 0 && !points[i].IsAfterGap)
            ranges.Take(std::fabs(points[i].Y - points[i - 1].Y));
    }
    const ControlLimits limits{all.Mean(), ranges.Mean() / RangeOfTwo};
    const bool isKnown = ranges.Count() > 0 && std::isfinite(limits.Low()) && std::isfinite(limits.High());
    return isKnown ? std::optional(limits) : std::nullopt;
}

} // namespace plotting
