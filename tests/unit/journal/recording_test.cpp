// SPDX-License-Identifier: MIT
#include "journal/recording.h"

#include <gtest/gtest.h>

namespace journal {
namespace {

Line At(const char* time, std::int64_t ms) {
    return {{"time", time}, {"ms", ms}};
}

TEST(Recording, HasBytesAsPrintableText) {
    EXPECT_EQ(RecordingLine(15, std::string("a %\r\n\0\x7F\xB0~", 9)), "15 a %25%0D%0A%00%7F%B0~\n");
}

TEST(Recording, HasTheTimeByTheClockThatCannotBeSet) {
    RecordingTimes times;
    EXPECT_EQ(times.SinceLast(At("2026-11-22T20:30:05", 70)), 0);
    EXPECT_EQ(times.SinceLast(At("2026-11-22T19:00:00", 570)), 500);
}

TEST(Recording, HasTheTimeBetweenTwoRunsByTheClockOfTheForm) {
    RecordingTimes times;
    times.BeginRun();
    EXPECT_EQ(times.SinceLast(At("2026-11-22T23:59:58", 5000)), 0);
    times.BeginRun();
    EXPECT_EQ(times.SinceLast(At("2026-11-23T00:00:01", 10)), 3000);
    times.BeginRun();
    EXPECT_EQ(times.SinceLast(At("2026-11-22T00:00:01", 10)), 0) << "it was set back";
    EXPECT_EQ(times.SinceLast(At("2026-11-22T00:00:01", 30)), 20);
}

} // namespace
} // namespace journal
