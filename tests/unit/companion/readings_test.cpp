// SPDX-License-Identifier: MIT
#include "companion/readings.h"

#include <gtest/gtest.h>

namespace companion {
namespace {

platform::Verdict Reading(const Text& lines) {
    platform::Verdict verdict;
    verdict.Reading.Blob = std::make_shared<const platform::SentBlob>(platform::SentBlob{lines, u"QI-1"});
    return verdict;
}

TEST(ReadingsOfARun, AreNumberedFromOne) {
    Readings readings;
    readings.ReadingJudged(Reading(u"first"));
    readings.ReadingJudged(Reading(u"second"));
    EXPECT_EQ(readings.Count(), 2U);
    EXPECT_EQ(readings.Number(0), nullptr);
    ASSERT_NE(readings.Number(2), nullptr);
    EXPECT_EQ(readings.Number(2)->Blob->Lines, u"second");
    EXPECT_EQ(readings.Number(3), nullptr);
}

TEST(ReadingsOfARun, KeepTheirNumbersWhenTheFirstOnesGo) {
    Readings readings;
    for (std::size_t n = 0; n < Readings::Capacity; ++n)
        readings.ReadingJudged({});
    readings.ReadingJudged(Reading(u"one too many"));
    EXPECT_EQ(readings.Number(1), nullptr);
    EXPECT_NE(readings.Number(2), nullptr);
    ASSERT_NE(readings.Number(Readings::Capacity + 1), nullptr);
    EXPECT_EQ(readings.Number(Readings::Capacity + 1)->Blob->Lines, u"one too many");
}

} // namespace
} // namespace companion
