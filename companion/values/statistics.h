// SPDX-License-Identifier: MIT
// Statistics of a column.
#pragma once

#include <cstddef>

namespace values {

/// Takes one number after the other. Welford's method: no sum of squares, in which small differences of large numbers
/// would be lost.
class Statistics {
public:
    void Take(double value);
    std::size_t Count() const { return Count_; }
    // Of no number: 0.
    double Minimum() const { return Minimum_; }
    double Maximum() const { return Maximum_; }
    double Mean() const { return Mean_; }
    /// Of a sample: the sum of squares is divided by one less than the count. 0 for fewer than two numbers.
    double StandardDeviation() const;

private:
    std::size_t Count_ = 0;
    double Minimum_ = 0;
    double Maximum_ = 0;
    double Mean_ = 0;
    double Squares_ = 0; ///< sum of the squared distances from the mean
};

} // namespace values
