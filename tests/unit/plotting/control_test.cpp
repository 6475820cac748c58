// SPDX-License-Identifier: MIT
#include "plotting/control.h"
#include "plotting/histogram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace plotting {
namespace {

std::vector<Point> PointsOf(const std::vector<double>& values) {
    std::vector<Point> points;
    for (const double value : values)
        points.push_back({static_cast<double>(points.size()), value, false});
    return points;
}

// 10 12 11 13: mean 11.5; ranges 2 1 2, their mean 5/3, sigma 5/3/1.128 = 1.47754, limits 11.5 -+ 4.43262
TEST(ControlLimits, AreThoseThatAreComputedByHand) {
    const auto limits = ControlLimitsOf(PointsOf({10, 12, 11, 13}));
    ASSERT_TRUE(limits);
    EXPECT_DOUBLE_EQ(limits->Mean, 11.5);
    EXPECT_NEAR(limits->Low(), 7.06738, 1e-5);
    EXPECT_NEAR(limits->High(), 15.93262, 1e-5);
    EXPECT_TRUE(limits->IsOutside(15.94));
    EXPECT_FALSE(limits->IsOutside(7.07));
}

TEST(ControlLimits, TakeNoRangeAcrossAGap) {
    std::vector<Point> points = PointsOf({10, 12, 50, 51});
    points[2].IsAfterGap = true; // 38 is no range: 2 and 1 are
    EXPECT_NEAR(ControlLimitsOf(points)->Sigma, 1.5 / 1.128, 1e-9);
}

TEST(ControlLimits, NeedTwoValuesThatFollowEachOther) {
    EXPECT_FALSE(ControlLimitsOf(PointsOf({10})));
    std::vector<Point> points = PointsOf({10, 12});
    points[1].IsAfterGap = true;
    EXPECT_FALSE(ControlLimitsOf(points));
}

TEST(Bins, CountEachValueOnce) {
    const Bins bins = BinsOf(PointsOf({0, 0.1, 0.2, 0.3, 0.3, 0.7}));
    std::size_t sum = 0;
    for (const std::size_t count : bins.Counts)
        sum += count;
    EXPECT_EQ(sum, 6U);
    EXPECT_DOUBLE_EQ(bins.Width, 0.2);
    EXPECT_THAT(bins.Counts, testing::ElementsAre(2, 3, 0, 1)) << "a value on an edge belongs to the higher one";
}

TEST(Bins, AreThereForEqualHugeAndTinyValues) {
    for (const std::vector<double>& values : {std::vector<double>{5, 5, 5},
                                              {1e300, -1e300},
                                              {1e-300, 2e-300},
                                              {-1.7e308, 1.7e308},
                                              {0},
                                              {1e15, 1e15 + 1}}) {
        const Bins bins = BinsOf(PointsOf(values));
        std::size_t sum = 0;
        for (const std::size_t count : bins.Counts)
            sum += count;
        EXPECT_EQ(sum, values.size());
        EXPECT_LE(bins.Counts.size(), 45U);
    }
}

} // namespace
} // namespace plotting
