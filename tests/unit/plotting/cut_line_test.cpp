// SPDX-License-Identifier: MIT
#include "plotting/cut_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace plotting {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ACutLine, EndsWhereItLeavesAndBeginsWhereItComesBack) {
    EXPECT_THAT(PartsBetween({{0, 5}, {1, 15}, {2, 15}, {3, 5}}, 0, 10),
                ElementsAre(ElementsAre(Spot{0, 5}, Spot{0.5, 10}), ElementsAre(Spot{2.5, 10}, Spot{3, 5})));
    EXPECT_THAT(PartsBetween({{0, -5}, {1, 5}, {2, -5}}, 0, 10),
                ElementsAre(ElementsAre(Spot{0.5, 0}, Spot{1, 5}, Spot{1.5, 0})));
}

TEST(ACutLine, CrossesWithoutAPointInside) {
    EXPECT_THAT(PartsBetween({{0, -10}, {2, 30}}, 0, 10), ElementsAre(ElementsAre(Spot{0.5, 0}, Spot{1, 10})));
    EXPECT_THAT(PartsBetween({{0, 30}, {2, -10}}, 0, 10), ElementsAre(ElementsAre(Spot{1, 10}, Spot{1.5, 0})));
}

TEST(ACutLine, IsNoneBesideTheRoom) {
    EXPECT_THAT(PartsBetween({{0, 11}, {1, 12}, {2, 11}}, 0, 10), IsEmpty());
    EXPECT_THAT(PartsBetween({{0, 5}}, 0, 10), IsEmpty());
}

TEST(ACutLine, IsWholeIfItLiesInside) {
    const std::vector<Spot> line = {{0, 0}, {1, 10}, {2, 5}};
    EXPECT_THAT(PartsBetween(line, 0, 10), ElementsAre(line));
}

} // namespace
} // namespace plotting
