// SPDX-License-Identifier: MIT
#include "journal/recording.h"

#include <gtest/gtest.h>

namespace journal {
namespace {

TEST(Recording, HasBytesAsPrintableText) {
    EXPECT_EQ(RecordingLine(15, std::string("a %\r\n\0\x7F\xB0~", 9)), "15 a %25%0D%0A%00%7F%B0~\n");
}

TEST(Recording, HasTheTimeByTheClockThatCannotBeSet) {
    RecordingTimes times;
    EXPECT_EQ(times.SinceLast(70, 90'000), 0);
    EXPECT_EQ(times.SinceLast(570, 10), 500);
}

TEST(Recording, HasTheTimeBetweenTwoRunsByTheClockOfTheForm) {
    RecordingTimes times;
    times.BeginRun();
    EXPECT_EQ(times.SinceLast(5000, 100), 0);
    times.BeginRun();
    EXPECT_EQ(times.SinceLast(10, 103), 3000);
    times.BeginRun();
    EXPECT_EQ(times.SinceLast(10, 50), 0) << "it was set back";
    EXPECT_EQ(times.SinceLast(30, 50), 20);
}

} // namespace
} // namespace journal
