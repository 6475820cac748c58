// SPDX-License-Identifier: MIT
#include "companion/values/statistics.h"

#include <gtest/gtest.h>

namespace values {
namespace {

Statistics Of(const std::vector<double>& numbers) {
    Statistics statistics;
    for (const double number : numbers)
        statistics.Take(number);
    return statistics;
}

TEST(StatisticsOfAColumn, AreThoseOfATextbook) {
    const Statistics all = Of({2, 4, 4, 4, 5, 5, 7, 9});
    EXPECT_EQ(all.Count(), 8U);
    EXPECT_EQ(all.Minimum(), 2);
    EXPECT_EQ(all.Maximum(), 9);
    EXPECT_DOUBLE_EQ(all.Mean(), 5);
    EXPECT_NEAR(all.StandardDeviation(), 2.13808993529939, 1e-12); // the root of 32 / 7
}

TEST(StatisticsOfAColumn, KeepSmallDifferencesOfLargeNumbers) {
    EXPECT_NEAR(Of({1e9 + 4, 1e9 + 7, 1e9 + 13, 1e9 + 16}).StandardDeviation(), 5.477225575051661, 1e-6);
}

TEST(StatisticsOfAColumn, OfOneNumberHaveNoDeviation) {
    EXPECT_EQ(Of({-3}).StandardDeviation(), 0);
    EXPECT_EQ(Of({-3}).Maximum(), -3);
    EXPECT_EQ(Of({}).Count(), 0U);
}

} // namespace
} // namespace values
