// SPDX-License-Identifier: MIT
#include "companion/value_limits.h"

#include "companion/judged_words.h"
#include "src/drivers/selection.h"
#include "tests/support/printed_rows.h"
#include "tests/support/test_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

namespace companion {
namespace {

using platform::Fate;
using testing::ElementsAre;
using testing::IsEmpty;

// The number of a value.

struct NumberRow {
    const char16_t* Value;
    std::optional<double> Number;
};

void PrintTo(const NumberRow& row, std::ostream* out) {
    *out << '"' << modStringTools::ToBytes(row.Value) << '"';
}

class NumberOfAValue : public testing::TestWithParam<NumberRow> {};

TEST_P(NumberOfAValue, IsTheOneAtItsBeginning) {
    EXPECT_EQ(NumberOf(GetParam().Value), GetParam().Number);
}

INSTANTIATE_TEST_SUITE_P(Each, NumberOfAValue,
                         testing::Values(NumberRow{u"24.5 %", 24.5}, NumberRow{u"24,5 %", 24.5}, NumberRow{u"7", 7.0},
                                         NumberRow{u"-3.25", -3.25}, NumberRow{u"+4", 4.0}, NumberRow{u" \t8 mm", 8.0},
                                         NumberRow{u".5", 0.5}, NumberRow{u"1,234.5", 1.234}, NumberRow{u"12.", 12.0},
                                         NumberRow{u"1.5e3", 1500.0}, NumberRow{u"2E-2 V", 0.02},
                                         NumberRow{u"5 e", 5.0}, NumberRow{u"5e", 5.0}, NumberRow{u"5E+", 5.0},
                                         NumberRow{u"007", 7.0}, NumberRow{u"", std::nullopt},
                                         NumberRow{u"dry", std::nullopt}, NumberRow{u"<0.5", std::nullopt},
                                         NumberRow{u"-", std::nullopt}, NumberRow{u".", std::nullopt},
                                         NumberRow{u"- 5", std::nullopt}, NumberRow{u"nan", std::nullopt},
                                         NumberRow{u"inf", std::nullopt}, NumberRow{u"1e999", std::nullopt}));

// The table.

const std::vector<Text> Columns = {u"Site", u"Moisture", u"Temperature"};
const Text Head = u"COLUMN|WARNLOW|WARNHIGH|FAILLOW|FAILHIGH\n";

std::string Problems(const Text& table) {
    Text all;
    const ValueLimits limits(table, Columns);
    for (const Text& problem : limits.Problems())
        all += problem + u"\n";
    return modStringTools::ToBytes(all);
}

/// Returns the breach and its limit, such as "faillow 5"; empty if the value is inside.
std::string Judged(const ValueLimits& limits, const Text& column, const Text& value) {
    const auto outside = limits.Judge(column, value);
    return outside ? modStringTools::ToBytes(NameOf(outside->Breach) + u" " + outside->Limit) : std::string();
}

TEST(LimitsOfValues, AreInsideThemselves) {
    const ValueLimits limits(Head + u"Moisture|5|20|2|25\n", Columns);
    EXPECT_THAT(limits.Problems(), IsEmpty());
    for (const char16_t* inside : {u"5", u"5.0 %", u"12", u"20"})
        EXPECT_EQ(Judged(limits, u"Moisture", inside), "") << modStringTools::ToBytes(inside);
    EXPECT_EQ(Judged(limits, u"Moisture", u"4.9 %"), "warnlow 5");
    EXPECT_EQ(Judged(limits, u"Moisture", u"2"), "warnlow 5");
    EXPECT_EQ(Judged(limits, u"Moisture", u"20.1"), "warnhigh 20");
    EXPECT_EQ(Judged(limits, u"Moisture", u"1.9"), "faillow 2") << "which is worse than a warning";
    EXPECT_EQ(Judged(limits, u"Moisture", u"25,1"), "failhigh 25");
}

TEST(LimitsOfValues, AreNoneWhereTheirCellIsEmpty) {
    const ValueLimits limits(Head + u"Moisture||20\r\n\nTemperature|||-10|\n", Columns);
    EXPECT_THAT(limits.Problems(), IsEmpty());
    EXPECT_EQ(Judged(limits, u"Moisture", u"-100"), "");
    EXPECT_EQ(Judged(limits, u"Moisture", u"100"), "warnhigh 20");
    EXPECT_EQ(Judged(limits, u"Temperature", u"-11"), "faillow -10");
    EXPECT_EQ(Judged(limits, u"Site", u"1"), "");
}

TEST(LimitsOfValues, AreFoundWithoutRegardToCaseOrOrder) {
    const ValueLimits limits(u"failhigh|Note|column\n9|x|moisture\n", Columns);
    EXPECT_THAT(limits.Problems(), IsEmpty());
    EXPECT_EQ(Judged(limits, u"MOISTURE", u"10"), "failhigh 9");
}

TEST(LimitsOfValues, JudgeNoTextWithoutANumber) {
    const ValueLimits limits(Head + u"Moisture|5|20||\n", Columns);
    for (const char16_t* text : {u"", u"dry", u"<1"})
        EXPECT_EQ(Judged(limits, u"Moisture", text), "");
}

TEST(LimitsOfValues, SayWhichLineIsWrongAndUseTheRest) {
    const Text table = Head + u"Moisture|5|x|2|25 %\nPressure|1|2||\nmoisture|1|||\nTemperature|9|1|0|\n";
    EXPECT_EQ(Problems(table), "line 2: \"x\" is no number\n"
                               "line 2: \"25 %\" is no number\n"
                               "line 3: the driver has no column \"Pressure\"\n"
                               "line 4: moisture has limits already\n"
                               "line 5: the low limit 9 is above the high one, 1\n");
    const ValueLimits limits(table, Columns);
    EXPECT_EQ(Judged(limits, u"Moisture", u"4"), "warnlow 5");
    EXPECT_EQ(Judged(limits, u"Moisture", u"99"), "");
    EXPECT_EQ(Judged(limits, u"Temperature", u"5"), "");
    EXPECT_EQ(Judged(limits, u"Temperature", u"-1"), "faillow 0");
}

TEST(LimitsOfValues, NeedAColumnOfColumns) {
    EXPECT_EQ(Problems(u"NAME|WARNLOW\nMoisture|5\n"), "line 1: it has no column COLUMN\n");
    EXPECT_EQ(Problems(u""), "line 1: it has no column COLUMN\n");
}

// The words of a verdict.

class JudgedReading : public testing::Test {
protected:
    JudgedWords Words(Fate fate, const Text& value) {
        platform::Verdict verdict{.Fate = fate, .Row = fate == Fate::NoRow ? -1 : 1, .Field = u"Moisture"};
        verdict.Reading.Types = {u"M"};
        verdict.Reading.Value = value;
        verdict.Reading.Unit = u"%";
        return WordsOfJudged(verdict, &Limits);
    }
    static std::string Bytes(const JudgedWords& words) { return modStringTools::ToBytes(words.Line()); }

    support::TestDevice Device;
    const ValueLimits Limits{Head + u"Moisture|5|20|2|25\n", Columns};
};

TEST_F(JudgedReading, SaysThatItIsOutsideOfALimit) {
    EXPECT_EQ(Bytes(Words(Fate::Taken, u"12")), "● M 12 % → Moisture");
    EXPECT_EQ(Bytes(Words(Fate::Taken, u"4")), "▲ warning: M 4 % → Moisture; below the limit 5");
    EXPECT_EQ(Bytes(Words(Fate::NoType, u"26")), "✖ fail: M 26 % → Moisture, without a type; above the limit 25");
}

TEST_F(JudgedReading, IsAnAlarmIfItFails) {
    EXPECT_EQ(Words(Fate::Taken, u"4").Verdict.Outcome, Outcome::Taken);
    EXPECT_EQ(Words(Fate::Taken, u"1").Verdict.Outcome, Outcome::Alarm);
    EXPECT_EQ(Words(Fate::Replaced, u"99").Verdict.Outcome, Outcome::Alarm);
}

TEST_F(JudgedReading, IsComparedOnlyIfItIsOnTheScreen) {
    EXPECT_THAT(Bytes(Words(Fate::Kept, u"1")), testing::Not(testing::HasSubstr("limit")));
    EXPECT_THAT(Bytes(Words(Fate::NoRow, u"1")), testing::Not(testing::HasSubstr("limit")));
    EXPECT_THAT(Bytes(Words(Fate::OpenField, u"1")), testing::HasSubstr("below the limit 2"));
}

} // namespace
} // namespace companion
