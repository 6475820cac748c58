// SPDX-License-Identifier: MIT
#include "companion/readings.h"

#include <gtest/gtest.h>

namespace companion {
namespace {

platform::Verdict Refused(const Text& blob) {
    platform::Verdict verdict;
    verdict.Fate = platform::Fate::Origin;
    verdict.Reading.Blob = std::make_shared<const Text>(blob);
    return verdict;
}

TEST(ReadingsOfARun, AreNumberedFromOne) {
    KeptReadings readings;
    readings.ReadingJudged(Refused(u"first"));
    readings.ReadingJudged(Refused(u"second"));
    EXPECT_EQ(readings.Count(), 2U);
    EXPECT_EQ(readings.Number(0), nullptr);
    ASSERT_NE(readings.Number(2), nullptr);
    EXPECT_EQ(*readings.Number(2)->Blob, u"second");
    EXPECT_EQ(readings.Number(3), nullptr);
}

TEST(ReadingsOfARun, AreBLobsOfTheirOwnOnceDelivered) {
    KeptReadings readings;
    platform::Verdict verdict;
    verdict.Reading.Types = {u"Moisture"};
    verdict.Reading.Value = u"14.1";
    verdict.Reading.Unit = u"%";
    readings.ReadingJudged(verdict);
    EXPECT_EQ(*readings.Number(1)->Blob, u"[BLob]\r[RESULT_TYPE \"Moisture\"]\r[RESULT_VALUE \"14.1\"]\r"
                                         u"[RESULT_UNIT \"%\"]\r[/BLob]\r");
}

TEST(ReadingsOfARun, GoFromTheFirstOnWithoutANewNumber) {
    KeptReadings readings;
    const Text large(KeptReadings::Capacity / 4 + 1, u'x');
    for (int n = 0; n < 3; ++n)
        readings.ReadingJudged(Refused(large));
    EXPECT_NE(readings.Number(1), nullptr);
    readings.ReadingJudged(Refused(u"last"));
    EXPECT_NE(readings.Number(1), nullptr);
    readings.ReadingJudged(Refused(large));
    EXPECT_EQ(readings.Number(1), nullptr);
    EXPECT_NE(readings.Number(2), nullptr);
    EXPECT_EQ(*readings.Number(4)->Blob, u"last");
}

TEST(ReadingsOfARun, KeepTheLastOneHoweverLarge) {
    KeptReadings readings;
    readings.ReadingJudged(Refused(Text(KeptReadings::Capacity + 1, u'x')));
    EXPECT_NE(readings.Number(1), nullptr);
}

/// Counts the reports.
class Counter final : public platform::ReadingLog {
public:
    void TextReceived(platform::TextSource, TextView) override { ++Reports; }
    void DecodingBegins() override { ++Reports; }
    void TextEmptied(TextView) override { ++Reports; }
    void ReadingJudged(const platform::Verdict&) override { ++Reports; }
    void RowChanged(const platform::RowChange&) override { ++Reports; }
    int Reports = 0;
};

TEST(ReadingsOfARun, AreReportedToEachObserver) {
    ReadingReports readings;
    Counter first;
    Counter second;
    readings.Add(first);
    readings.Add(second);
    readings.TextReceived(platform::TextSource::Port, u"x");
    readings.DecodingBegins();
    readings.TextEmptied(u"x");
    readings.ReadingJudged({});
    readings.RowChanged({});
    EXPECT_EQ(first.Reports, 5);
    EXPECT_EQ(second.Reports, 5);
}

} // namespace
} // namespace companion
