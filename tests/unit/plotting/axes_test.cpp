// SPDX-License-Identifier: MIT
#include "plotting/axes.h"

#include "plotting/moments_of_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace plotting {
namespace {

using testing::ElementsAre;

std::vector<std::string> LabelsOf(const std::vector<Tick>& ticks) {
    std::vector<std::string> labels;
    for (const Tick& tick : ticks)
        labels.push_back(tick.Label + (tick.Below.empty() ? "" : " " + tick.Below));
    return labels;
}

TEST(TicksOfNumbers, AreMultiplesOfOneTwoOrFive) {
    EXPECT_THAT(LabelsOf(NumberTicks(0, 10, 6)), ElementsAre("0", "2", "4", "6", "8", "10"));
    EXPECT_THAT(LabelsOf(NumberTicks(14.2, 22.9, 6)), ElementsAre("16", "18", "20", "22"));
    EXPECT_THAT(LabelsOf(NumberTicks(-0.07, 0.11, 5)), ElementsAre("-0.05", "0", "0.05", "0.10"));
    EXPECT_THAT(LabelsOf(NumberTicks(0.1, 0.4, 5)), ElementsAre("0.1", "0.2", "0.3", "0.4"));
    EXPECT_THAT(LabelsOf(NumberTicks(0, 2, 8, true)), ElementsAre("0", "1", "2"));
}

TEST(TicksOfNumbers, AreThereForAnyMagnitude) {
    EXPECT_THAT(LabelsOf(NumberTicks(0, 1e300, 3)), ElementsAre("0", "5e299", "1e300"));
    EXPECT_THAT(LabelsOf(NumberTicks(-1.6e308, 1.6e308, 4)), ElementsAre("-1e308", "0", "1e308"));
    EXPECT_THAT(LabelsOf(NumberTicks(1e-300, 4e-300, 4)), ElementsAre("1e-300", "2e-300", "3e-300", "4e-300"));
    EXPECT_THAT(LabelsOf(NumberTicks(1e15, 1e15 + 4, 4)),
                ElementsAre("1e15", "1.000000000000002e15", "1.000000000000004e15"));
}

TEST(TicksOfNumbers, AreNeverMoreThanThereIsRoomFor) {
    for (double low = -3; low < 3; low += 0.37)
        for (double size = 1e-7; size < 1e7; size *= 3.3)
            for (int most = 2; most < 9; ++most) {
                const auto ticks = NumberTicks(low, low + size, most);
                ASSERT_LE(ticks.size(), static_cast<std::size_t>(most)) << low << " " << size;
                ASSERT_GE(ticks.size(), 1U) << low << " " << size;
            }
}

TEST(TicksOfTime, AreThoseOfAClockAndACalendar) {
    const double day = SecondsOfDate("2026-11-21");
    EXPECT_THAT(LabelsOf(TimeTicks(day + 1, day + 31, 4, true)),
                ElementsAre("00:00:10 2026-11-21", "00:00:20", "00:00:30"));
    EXPECT_THAT(LabelsOf(TimeTicks(day + 86000, day + 90000, 3, true)),
                ElementsAre("00:00 2026-11-22", "00:30", "01:00"));
    EXPECT_THAT(LabelsOf(TimeTicks(day, day + 3 * 86400, 4, true)),
                ElementsAre("2026-11-21", "2026-11-22", "2026-11-23", "2026-11-24"));
    EXPECT_THAT(LabelsOf(TimeTicks(day, day + 100 * 86400.0, 4, true)),
                ElementsAre("2026-12", "2027-01", "2027-02", "2027-03"));
    EXPECT_THAT(LabelsOf(TimeTicks(day, day + 4000 * 86400.0, 6, true)),
                ElementsAre("2028", "2030", "2032", "2034", "2036"));
    EXPECT_THAT(LabelsOf(TimeTicks(22 * 3600, 26 * 3600, 5, false)),
                ElementsAre("22:00", "23:00", "00:00 day 2", "01:00", "02:00"));
}

TEST(ARange, OfOneValueBecomesOneWithRoom) {
    for (const double value : {0.0, 23.5, -1e300, 1e-300, 1.7e308}) {
        double low = value, high = value;
        Widen(low, high, 0.04);
        EXPECT_LT(low, high) << value;
        const Axis axis{low, high, {}};
        EXPECT_GE(axis.Share(value), 0) << value;
        EXPECT_LE(axis.Share(value), 1) << value;
    }
    const Axis whole{-1.7e308, 1.7e308, {}};
    EXPECT_DOUBLE_EQ(whole.Share(0), 0.5);
}

} // namespace
} // namespace plotting
