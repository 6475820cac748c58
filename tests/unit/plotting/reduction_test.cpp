// SPDX-License-Identifier: MIT
#include "plotting/reduction.h"

#include "tests/unit/plotting/plotted.h"

namespace plotting {
namespace {

TEST(AReducedLine, HasTheFirstLowestHighestAndLastOfAPixel) {
    const std::vector<Spot> line = {{0.1, 5}, {0.2, 9}, {0.3, 6}, {0.4, 1}, {0.5, 4}, {1.5, 3}};
    EXPECT_THAT(ReducedLine(line),
                testing::ElementsAre(Spot{0.1, 5}, Spot{0.2, 9}, Spot{0.4, 1}, Spot{0.5, 4}, Spot{1.5, 3}));
}

TEST(AReducedLine, OfManyPointsLosesNoSpike) {
    constexpr int Points = 100'000;
    std::string table = "Moisture\n";
    for (int i = 0; i < Points; ++i)
        table += (i == 54321 ? "99" : i == 77777 ? "-99" : std::to_string(i % 7)) + std::string(" %\n");
    const Scene scene = Drawn(table);
    const auto lines = PartsOf<Polyline>(scene, Role::Data);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_LT(lines.front().Spots.size(), 4000U);
    EXPECT_GT(lines.front().Spots.size(), 1000U);
    double top = 1e9, bottom = 0;
    Spot highest, lowest;
    for (const Spot& spot : lines.front().Spots) {
        if (spot.Y < top) {
            top = spot.Y;
            highest = spot;
        }
        if (spot.Y > bottom) {
            bottom = spot.Y;
            lowest = spot;
        }
    }
    const double left = lines.front().Spots.front().X, right = lines.front().Spots.back().X;
    EXPECT_NEAR((highest.X - left) / (right - left), 0.54321, 0.0001);
    EXPECT_NEAR((lowest.X - left) / (right - left), 0.77777, 0.0001);
    for (const Spot& spot : lines.front().Spots)
        EXPECT_TRUE(spot == highest || spot == lowest || std::abs(spot.Y - (top + bottom) / 2) < 25);
}

TEST(ReducedMarkers, AreOneForEachPixel) {
    EXPECT_THAT(ReducedMarkers({{1.1, 2.1}, {1.9, 2.9}, {1.1, 3.1}}),
                testing::ElementsAre(Spot{1.1, 2.1}, Spot{1.1, 3.1}));
}

} // namespace
} // namespace plotting
