// SPDX-License-Identifier: MIT
#include "tests/unit/apps/quorin-journal/journal_run.h"

namespace reader {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

const std::string Exact = "# A session by the virtual clock: played on the same files, it gives the same files.\n";
const std::string CommandLine = "# quorin-console --clock virtual\n";

std::string Key(int code, const std::string& ms = "100") {
    return R"({"ms":)" + ms + R"(,"event":"act","act":"key","args":")" + std::to_string(code) + "\"}";
}

const std::string End = R"({"ms":200,"event":"end","why":"the commands ended"})";
std::string NextDay(const std::string& ms) {
    return R"({"ms":)" + ms +
           R"(,"event":"day","program":"quorin-console","pid":7,"root":"/data/meter","words":[],"clock":"virtual"})";
}

TEST_F(Journal, StoryIsAScriptOfTheConsole) {
    Day("2026-11-22", {Start(), Key(13), End});
    const Outcome story = Run({"story", "2026-11-22"});
    EXPECT_EQ(story.Output, Exact + "# session 1 of 1, begun 2026-11-22 10:00:00 in /data/meter\n" + CommandLine +
                                "tick 100\nkey 13\ntick 100\n");
    EXPECT_EQ(story.Errors, "");
    EXPECT_EQ(story.Status, 0);
}

TEST_F(Journal, StoryIsOfOneSession) {
    Day("2026-11-22", {Start(), Key(1), End, Start(), Key(2), Start(), Key(3), End});
    EXPECT_THAT(Run({"story", "2026-11-22"}).Output, HasSubstr("# session 3 of 3, begun"));
    EXPECT_THAT(Run({"story", "2026-11-22"}).Output, EndsWith(CommandLine + "tick 100\nkey 3\ntick 100\n"));
    EXPECT_THAT(Run({"story", "2026-11-22", "--session", "1"}).Output,
                EndsWith(CommandLine + "tick 100\nkey 1\ntick 100\n"));
    EXPECT_THAT(Run({"story", "2026-11-22", "--session", "2"}).Output, EndsWith(CommandLine + "tick 100\nkey 2\n"));
    const Outcome beyond = Run({"story", "2026-11-22", "--session", "4"});
    EXPECT_EQ(beyond.Errors, "quorin-journal: there are only 3 sessions on 2026-11-22\n");
    EXPECT_EQ(beyond.Status, 1);
}

/// The next day's file may have sessions that were before, by a virtual clock.
TEST_F(Journal, StoryGoesOnAfterMidnight) {
    Day("2026-11-22", {Start(), Key(1)});
    Day("2026-11-23", {Key(9), Start(), Key(8), End, NextDay("50"), Key(9), NextDay("300"), Key(2, "400")});
    Day("2026-11-23", {NextDay("410"), Key(9, "410")}, Other);
    Day("2026-11-25", {NextDay("420"), Key(3, "500"), R"({"ms":500,"event":"end"})", NextDay("500"), Key(9, "600")});
    EXPECT_THAT(Run({"story", "2026-11-22"}).Output,
                EndsWith(CommandLine + "tick 100\nkey 1\ntick 300\nkey 2\ntick 100\nkey 3\n"));
    EXPECT_THAT(Run({"story", "2026-11-23"}).Output, EndsWith(CommandLine + "tick 100\nkey 8\ntick 100\n"));
}

TEST_F(Journal, StoryOfAnotherProcessIsNotGoneOnWith) {
    Day("2026-11-22", {Start(), Key(1)});
    std::string other = NextDay("300");
    other.replace(other.find("\"pid\":7"), 7, "\"pid\":8");
    Day("2026-11-23", {other, Key(2, "400")});
    EXPECT_THAT(Run({"story", "2026-11-22"}).Output, EndsWith(CommandLine + "tick 100\nkey 1\n"));
}

TEST_F(Journal, StoryOfARealClockSaysThatItIsNotExact) {
    Day("2026-11-22",
        {R"({"ms":0,"event":"start","program":"quorin","words":["--root","a b"],"clock":"real"})", Key(1)});
    EXPECT_THAT(Run({"story", "2026-11-22"}).Output,
                StartsWith("# An approximation: the time passed by the machine's clock.\n"));
    EXPECT_THAT(Run({"story", "2026-11-22"}).Output, HasSubstr("\n# quorin --root a b\n"));
}

TEST_F(Journal, StoryOfNoSessionIsAFailure) {
    Day("2026-11-22", {Start()});
    const Outcome none = Run({"story", "2026-11-21"});
    EXPECT_EQ(none.Errors, "quorin-journal: no session begins on 2026-11-21\n");
    EXPECT_EQ(none.Status, 1);
    EXPECT_EQ(Run({"story"}).Status, 2);
    EXPECT_EQ(Run({"story", "yesterday"}).Status, 2);
    EXPECT_EQ(Run({"story", "2026-11-22", "--session", "0"}).Status, 2);
    EXPECT_THAT(Run({"story", "2026-11-22", "--session", "0"}).Errors, HasSubstr("from 1"));
}

} // namespace
} // namespace reader
