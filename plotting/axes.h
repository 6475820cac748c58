// SPDX-License-Identifier: MIT
// Axes with ticks at round numbers, or at round moments.
#pragma once

#include <string>
#include <vector>

namespace plotting {

struct Tick {
    double At = 0;
    std::string Label;
    std::string Below = {}; ///< the day, where it begins; empty at the others
};

struct Axis {
    double Low = 0, High = 1;
    std::vector<Tick> Ticks;

    /// Returns where a value lies: 0 at the low end, 1 at the high one.
    double Share(double value) const;
    bool HasSecondRow() const;
};

/// Returns the numbers from low to high that are multiples of 1, 2 or 5 times a power of ten: at most `most`, which is
/// 2 or more, and at least one. `isWhole`: of whole numbers only.
std::vector<Tick> NumberTicks(double low, double high, int most, bool isWhole = false);

/// Returns the seconds, minutes, hours, days, months or years from low to high, which are in seconds. `hasDate`: since
/// 1970; otherwise since a midnight.
std::vector<Tick> TimeTicks(double low, double high, int most, bool hasDate);

/// Widens a range, so that no value lies on its edge and one value alone has a range too.
void Widen(double& low, double& high, double share);

/// Returns the smallest of 1, 2 and 5 times a power of ten that is not below a positive number.
double RoundStep(double atLeast);

} // namespace plotting
