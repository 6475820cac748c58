// SPDX-License-Identifier: MIT
#include "src/text/ranges.h"

#include <gtest/gtest.h>

#include <limits>

namespace modStringTools {
namespace {

constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();

/// A range before and after it was clamped, and what becomes of "abcde" (or of `Before`).
struct RangeRow {
    std::int32_t First;
    std::int32_t Last;
    std::int32_t ClampedFirst;
    std::int32_t ClampedLast;
    Text After;
    Text Before = u"abcde";
};

void PrintTo(const RangeRow& row, std::ostream* out) {
    *out << row.First << " to " << row.Last << " of " << testing::PrintToString(row.Before);
}

class RemovedRanges : public testing::TestWithParam<RangeRow> {};

TEST_P(RemovedRanges, AreClampedForTheCallerToo) {
    RangeRow row = GetParam();
    RemoveRange(row.Before, row.First, row.Last);
    EXPECT_EQ(row.Before, row.After);
    EXPECT_EQ(row.First, row.ClampedFirst);
    EXPECT_EQ(row.Last, row.ClampedLast);
}

INSTANTIATE_TEST_SUITE_P(RemoveRange, RemovedRanges,
                         testing::Values(RangeRow{2, 3, 2, 3, u"ade"}, RangeRow{1, 5, 1, 5, u""},
                                         RangeRow{4, 9, 4, 5, u"abc"}, RangeRow{-1, 2, 1, 2, u"cde"},
                                         RangeRow{4, 2, 2, 2, u"acde"}, RangeRow{9, 9, 5, 5, u"abcd"},
                                         RangeRow{Lowest, Highest, 1, 5, u""}));

INSTANTIATE_TEST_SUITE_P(OutsideTheContractRemoveRange, RemovedRanges,
                         testing::Values(RangeRow{1, 0, 0, 0, u"abcde"}, RangeRow{2, -3, -3, -3, u"abcde"},
                                         RangeRow{1, 1, 0, 0, u"", u""},
                                         RangeRow{Highest, Lowest, Lowest, Lowest, u"", u""}));

class ReplacedRanges : public testing::TestWithParam<RangeRow> {};

TEST_P(ReplacedRanges, KeepTheirLastPositionWhateverTheReplacementsLength) {
    RangeRow row = GetParam();
    ReplaceRange(row.Before, u"XYZ", row.First, row.Last);
    EXPECT_EQ(row.Before, row.After);
    EXPECT_EQ(row.First, row.ClampedFirst);
    EXPECT_EQ(row.Last, row.ClampedLast);
}

INSTANTIATE_TEST_SUITE_P(ReplaceRange, ReplacedRanges,
                         testing::Values(RangeRow{2, 2, 2, 2, u"aXYZcde"}, RangeRow{2, 4, 2, 4, u"aXYZe"},
                                         RangeRow{1, 5, 1, 5, u"XYZ"}, RangeRow{0, 9, 1, 5, u"XYZ"},
                                         RangeRow{5, 3, 3, 3, u"abXYZde"}, RangeRow{9, 9, 5, 5, u"abcdXYZ"}));

TEST(ReplaceRange, PutsALongerTextInThePlaceOfAShorterOne) {
    Text text = u"this is a-a-a-a string";
    std::int32_t first = 9;
    std::int32_t last = 15;
    ReplaceRange(text, u"a very long", first, last);
    EXPECT_EQ(text, u"this is a very long string");
}

TEST(ReplaceRange, RemovesTheRangeForAnEmptyReplacement) {
    Text text = u"abcde";
    std::int32_t first = 2;
    std::int32_t last = 9;
    ReplaceRange(text, u"", first, last);
    EXPECT_EQ(text, u"a");
    EXPECT_EQ(last, 5);
}

struct Insertion {
    std::int32_t Position;
    std::int32_t Clamped;
    Text After;
};

void PrintTo(const Insertion& row, std::ostream* out) {
    *out << "at " << row.Position;
}

class InsertedTexts : public testing::TestWithParam<Insertion> {};

TEST_P(InsertedTexts, StandInFrontOfTheCharacterOrBehindTheEnd) {
    Text text = u"abc";
    std::int32_t position = GetParam().Position;
    InsertText(text, u"XY", position);
    EXPECT_EQ(text, GetParam().After);
    EXPECT_EQ(position, GetParam().Clamped);
}

INSTANTIATE_TEST_SUITE_P(InsertText, InsertedTexts,
                         testing::Values(Insertion{1, 1, u"XYabc"}, Insertion{3, 3, u"abXYc"},
                                         Insertion{4, 4, u"abcXY"}, Insertion{9, 9, u"abcXY"},
                                         Insertion{0, 1, u"XYabc"}, Insertion{Lowest, 1, u"XYabc"},
                                         Insertion{Highest, Highest, u"abcXY"}));

TEST(InsertText, FillsAnEmptyText) {
    Text text;
    std::int32_t position = 1;
    InsertText(text, u"ab", position);
    EXPECT_EQ(text, u"ab");
}

TEST(TextRange, GivesTheCharactersBetweenTwoPositions) {
    EXPECT_EQ(TextRange(u"abcde", 2, 4), u"bcd");
    EXPECT_EQ(TextRange(u"abcde", -3, 2), u"ab");
    EXPECT_EQ(TextRange(u"abcde", 4, 99), u"de");
}

TEST(TextRange, GivesOneCharacterAtLeastInsideTheText) {
    EXPECT_EQ(TextRange(u"abcde", 3, 1), u"c");
    EXPECT_EQ(TextRange(u"abcde", 3, -9), u"c");
    EXPECT_EQ(TextRange(u"abcde", 0, 0), u"a");
}

TEST(TextRange, GivesNothingBehindTheText) {
    EXPECT_EQ(TextRange(u"abcde", 6, 9), u"");
    EXPECT_EQ(TextRange(u"", 1, 1), u"");
}

struct TokenRow {
    Text Searched;
    Text Delimiter;
    std::int32_t Index;
    std::int32_t Count;
    Text Token;
};

void PrintTo(const TokenRow& row, std::ostream* out) {
    *out << "token " << row.Index << " of " << testing::PrintToString(row.Searched) << " ended by "
         << testing::PrintToString(row.Delimiter);
}

class Tokens : public testing::TestWithParam<TokenRow> {};

TEST_P(Tokens, AreCountedAndRead) {
    Text token = u"left over";
    EXPECT_EQ(GetToken(GetParam().Searched, GetParam().Delimiter, GetParam().Index, token), GetParam().Count);
    EXPECT_EQ(token, GetParam().Token);
}

INSTANTIATE_TEST_SUITE_P(GetToken, Tokens,
                         testing::Values(TokenRow{u"a|b|c", u"|", 2, 3, u"b"}, TokenRow{u"a|b|c", u"|", 3, 3, u"c"},
                                         TokenRow{u"abc", u"|", 1, 0, u""}, TokenRow{u"", u"|", 1, 0, u""},
                                         TokenRow{u"a|b|", u"|", 2, 2, u"b"}, TokenRow{u"a|b|", u"|", 3, 2, u""},
                                         TokenRow{u"|b", u"|", 1, 2, u""}, TokenRow{u"|b", u"|", 2, 2, u"b"},
                                         TokenRow{u"a||b", u"|", 2, 3, u""}, TokenRow{u"a||b", u"|", 3, 3, u"b"},
                                         TokenRow{u"a|", u"|", 1, 1, u"a"}, TokenRow{u"|", u"|", 1, 1, u""},
                                         TokenRow{u"a|b|c", u"|", 0, 3, u""}, TokenRow{u"a|b|c", u"|", 4, 3, u""},
                                         TokenRow{u"a|b|c", u"|", -1, 3, u""}, TokenRow{u"aXbxc", u"x", 1, 2, u"aXb"}));

INSTANTIATE_TEST_SUITE_P(LongDelimiterLeavesItsTailInGetToken, Tokens,
                         testing::Values(TokenRow{u"a--b", u"--", 1, 2, u"a"}, TokenRow{u"a--b", u"--", 2, 2, u"-b"},
                                         TokenRow{u"a--", u"--", 2, 2, u"-"}, TokenRow{u"a---b", u"--", 2, 3, u""},
                                         TokenRow{u"a---b", u"--", 3, 3, u"-b"}));

INSTANTIATE_TEST_SUITE_P(EmptyDelimiterEndsNothingInGetToken, Tokens,
                         testing::Values(TokenRow{u"abc", u"", 1, 0, u""}, TokenRow{u"", u"", 1, 0, u""}));

} // namespace
} // namespace modStringTools
