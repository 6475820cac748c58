// SPDX-License-Identifier: MIT
#include "journal/glance.h"

#include <gtest/gtest.h>

namespace journal {
namespace {

TEST(Glance, HasWhatDecidesAboutALine) {
    Glance seen;
    ASSERT_TRUE(
        LookAt(R"({"time":"2026-11-22T20:30:05","ms":7,"event":"reading","verdict":"taken","types":["A","B"]})", seen));
    EXPECT_EQ(seen.Time, "2026-11-22T20:30:05");
    EXPECT_EQ(seen.Event, "reading");
    EXPECT_EQ(seen.Verdict, "taken");
}

TEST(Glance, IsNotTakenFromInnerObjects) {
    Glance seen;
    ASSERT_TRUE(LookAt(R"({"x":{"event":"reading","time":"t"},"verdict":["taken"],"event":"act"})", seen));
    EXPECT_EQ(seen.Event, "act");
    EXPECT_EQ(seen.Time, "");
    EXPECT_EQ(seen.Verdict, "");
}

TEST(Glance, KeepsNothingOfTheLineBefore) {
    Glance seen{"reading", "2026-11-22T20:30:05", "taken"};
    ASSERT_TRUE(LookAt(" { } ", seen));
    EXPECT_EQ(seen.Event + seen.Time + seen.Verdict, "");
}

TEST(Glance, RefusesWhatIsNoObject) {
    Glance seen;
    for (const char* line : {"", "7", "null", "[]", R"("event")", "{", "{}{}", R"({"event":)", R"([{"event":"act"}])",
                             "{\"a\":\"\xFF\"}", "\xEF\xBB\xBF"})
        EXPECT_FALSE(LookAt(line, seen)) << line;
}

TEST(Period, HasTheWholeOfItsLastDayAndMinute) {
    const Period days{"2026-11-21", "2026-11-22"};
    EXPECT_FALSE(days.Has("2026-11-20T23:59:59"));
    EXPECT_TRUE(days.Has("2026-11-21T00:00:00"));
    EXPECT_TRUE(days.Has("2026-11-22T23:59:59"));
    EXPECT_FALSE(days.Has("2026-11-23T00:00:00"));
    const Period minute{"2026-11-22T20:30", "2026-11-22T20:30"};
    EXPECT_FALSE(minute.Has("2026-11-22T20:29:59"));
    EXPECT_TRUE(minute.Has("2026-11-22T20:30:59"));
    EXPECT_FALSE(minute.Has("2026-11-22T20:31:00"));
    EXPECT_TRUE(Period().Has("2026-11-22T20:31:00"));
    EXPECT_TRUE(Period().Has(""));
}

TEST(Values, OfAnotherKindCountAsNone) {
    const Line line = Line::parse(R"({"text":"a","number":7,"null":null})");
    EXPECT_EQ(TextIn(line, "text"), "a");
    EXPECT_EQ(TextIn(line, "number"), "");
    EXPECT_EQ(TextIn(line, "null"), "");
    EXPECT_EQ(TextIn(line, "none"), "");
    EXPECT_EQ(NumberIn(line, "number"), 7);
    EXPECT_EQ(NumberIn(line, "text"), 0);
}

} // namespace
} // namespace journal
