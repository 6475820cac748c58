// SPDX-License-Identifier: MIT
// The limits of a control chart of single values.
#pragma once

#include "plotting/series.h"

#include <optional>

namespace plotting {

struct ControlLimits {
    double Mean = 0;
    double Sigma = 0;
    double Low() const { return Mean - 3 * Sigma; }
    double High() const { return Mean + 3 * Sigma; }
    bool IsOutside(double value) const { return value < Low() || value > High(); }
};

/// Sigma is the mean distance of two values that follow each other, divided by 1.128, which it is for a normal
/// distribution: a drift of the values does not widen the limits, as it would widen the standard deviation. Two values
/// with a gap between them do not follow each other. Returns nothing if no two do.
std::optional<ControlLimits> ControlLimitsOf(const std::vector<Point>& points);

} // namespace plotting
