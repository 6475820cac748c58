// SPDX-License-Identifier: MIT
#include "journal/runs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace journal {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class RunsOfPrograms : public testing::Test {
protected:
    void Begin(const char* event, int ms = 0, int pid = 7) {
        Runs_.Take({{"time", "t0"}, {"event", event}, {"ms", ms}, {"program", "quorin"}, {"pid", pid}});
    }
    void Take(const char* event, const char* bytes = "", const char* time = "t1") {
        Runs_.Take({{"time", time}, {"event", event}, {"ms", 10}, {"bytes", bytes}});
    }
    std::size_t Results() {
        std::size_t count = 0;
        for (const UnreadText& text : Runs_.Unread())
            count += text.Results;
        return count;
    }
    Runs Runs_;
};

TEST_F(RunsOfPrograms, BreakOffWhereAnotherOneFollows) {
    Begin("start");
    EXPECT_THAT(Runs_.Breaks(), IsEmpty());
    Runs_.EndOfFile();
    Begin("start");
    EXPECT_THAT(Runs_.Breaks(), SizeIs(1));
}

/// A session by the virtual clock may begin on a day that another one has gone on from.
TEST_F(RunsOfPrograms, ThatGoOnInANextFileDoNotBreakOff) {
    Begin("start");
    Take("received", "[RESULT_UNIT");
    Begin("start", 0, 8);
    Take("end");
    Runs_.EndOfFile();
    Begin("day", 20);
    EXPECT_THAT(Runs_.Breaks(), IsEmpty());
    EXPECT_EQ(Results(), 0U); // it may be running
    Take("reading");
    Take("end");
    EXPECT_THAT(Runs_.Breaks(), IsEmpty());
    EXPECT_EQ(Results(), 0U);
}

TEST_F(RunsOfPrograms, ThatGoOnMayHaveTextOfTheDayBefore) {
    Begin("start");
    Take("received", "[RESULT_UNIT");
    Runs_.EndOfFile();
    Begin("day", 20);
    Take("end");
    EXPECT_EQ(Results(), 1U);
}

TEST_F(RunsOfPrograms, HaveTextSinceTheLastVerdict) {
    for (const char* judged : {"reading", "emptied"}) {
        Begin("start");
        Take("received", "[RESULT_UNIT");
        Take(judged);
        Take("end");
        EXPECT_EQ(Results(), 0U) << judged;
    }
}

TEST_F(RunsOfPrograms, HaveTextThatCameInParts) {
    Begin("start");
    Take("received", "x[RESULT_U");
    Take("received", "NIT [RESULT_UNIT ]");
    EXPECT_EQ(Results(), 0U);
    Take("end");
    EXPECT_EQ(Results(), 2U);
}

TEST_F(RunsOfPrograms, HaveTextOfAProgramThatWasKilled) {
    Begin("start");
    Take("received", "[RESULT_UNIT", "2026-11-22T23:59:59");
    Take("received", "]", "2026-11-23T00:00:00");
    Begin("start");
    ASSERT_THAT(Runs_.Unread(), SizeIs(1));
    EXPECT_EQ(Runs_.Unread()[0].Words(), "text with 1 result arrived 2026-11-22 23:59:59 to 2026-11-23 00:00:00 and "
                                         "was not looked at before the program ended");
}

TEST_F(RunsOfPrograms, TextWithoutAResultIsNone) {
    Begin("start");
    Take("received", "OK");
    Take("end");
    EXPECT_THAT(Runs_.Unread(), IsEmpty());
}

} // namespace
} // namespace journal
