// SPDX-License-Identifier: MIT
#include "companion/values/moments.h"

#include <gtest/gtest.h>

namespace values {
namespace {

TEST(DatesForOtherTools, AreYearMonthDay) {
    EXPECT_EQ(IsoDate("21/11/2026"), "2026-11-21");
    EXPECT_EQ(IsoDate("5/3/07"), "2007-03-05") << "as the form's calendar reads it";
    EXPECT_EQ(IsoDate("29/02/2028"), "2028-02-29");
    for (const char* text : {"", "29/02/2026", "2026-11-21", "11/21/2026", "21/11", "21/11/2026/1", "today"})
        EXPECT_EQ(IsoDate(text), std::nullopt) << text;
}

TEST(DatesFromOtherTools, AreThoseOfTheCalendar) {
    EXPECT_EQ(CellDate("2026-11-21"), "21/11/2026");
    EXPECT_EQ(CellDate("2028-02-29"), "29/02/2028");
    for (const char* text : {"", "2026-02-29", "21/11/2026", "2026-11-21 ", "26-11-2021", "2026/11/21", "0000-01-01"})
        EXPECT_EQ(CellDate(text), std::nullopt) << text;
}

TEST(TimesForOtherTools, HaveTwoDigitsAndTheZone) {
    EXPECT_EQ(IsoTime("9:30", ""), "09:30");
    EXPECT_EQ(IsoTime("09:30:05", "Z"), "09:30:05Z");
    EXPECT_EQ(IsoTime("23:59", "+01:00"), "23:59+01:00");
    for (const char* text : {"", "9", "24:00", "9:60", "09:30:05:1", "9:30 pm", ":30", "9:", "009:30"})
        EXPECT_EQ(IsoTime(text, ""), std::nullopt) << text;
}

TEST(Zones, AreUtcOrADifferenceFromIt) {
    for (const char* zone : {"Z", "+00:00", "-03:30", "+14:00"})
        EXPECT_TRUE(IsZone(zone)) << zone;
    for (const char* zone : {"", "z", "+1:00", "01:00", "+15:00", "+01:60", "+0100", "CET"})
        EXPECT_FALSE(IsZone(zone)) << zone;
}

} // namespace
} // namespace values
