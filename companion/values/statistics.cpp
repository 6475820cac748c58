// SPDX-License-Identifier: MIT
#include "companion/values/statistics.h"

#include <algorithm>
#include <cmath>

namespace values {

void Statistics::Take(double value) {
    ++Count_;
    Minimum_ = Count_ == 1 ? value : std::min(Minimum_, value);
    Maximum_ = Count_ == 1 ? value : std::max(Maximum_, value);
    const double before = value - Mean_;
    Mean_ += before / static_cast<double>(Count_);
    Squares_ += before * (value - Mean_);
}

double Statistics::StandardDeviation() const {
    return Count_ < 2 ? 0 : std::sqrt(Squares_ / static_cast<double>(Count_ - 1));
}

} // namespace values
