// SPDX-License-Identifier: MIT
#include "src/blob/decoding.h"

#include "tests/unit/src/blob/blob_texts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace modBLob {
namespace {

using blob_texts::Blob;
using blob_texts::BlobOfValue;
using blob_texts::DeliverValues;
using blob_texts::Joined;
using blob_texts::Lines;
using testing::ElementsAre;
using testing::IsEmpty;

class Decoding : public testing::Test {
protected:
    Decoding() { Decoder = {}; }

    static bool Decode(Lines lines) { return DecodeBlob(Blob(lines)); }

    static void Connect(const Text& identity) { ASSERT_TRUE(Decode({u"[CONNECT \"" + identity + u"\"]"})); }

    /// Returns the value and unit of a result that has this value line.
    static std::vector<Text> ValueAndUnitOf(TextView valueLine) {
        Decode({valueLine, u"[RESULT_UNIT \"ms\"]"});
        NextResult();
        return {Decoder.ResultValue, Decoder.ResultUnit};
    }
};

TEST_F(Decoding, FillsOneSlotFromTheWorkedExample) {
    Connect(u"A1");
    EXPECT_TRUE(Decode({u"[ORIGIN \"A1\"]", u"[DESCRIPTIVE_VAR \"Site=1\"]", u"[RESULT_TYPE \"Alpha\" \"x1\"]",
                        u"[RESULT_VALUE \"23.4\"]", u"[RESULT_UNIT \"ms\"]"}));
    EXPECT_THAT(TextsOfSlots(Decoder).Types, ElementsAre(u"1|Alpha|x1", u""));
    EXPECT_THAT(TextsOfSlots(Decoder).Vars, ElementsAre(u"1|ORIGIN=A1|Site=1", u""));
    EXPECT_THAT(TextsOfSlots(Decoder).Values, ElementsAre(u"1|23.4|ms", u""));

    ASSERT_TRUE(NextResult());
    EXPECT_THAT(Decoder.ResultTypes, ElementsAre(u"Alpha", u"x1"));
    EXPECT_THAT(Decoder.ResultVars, ElementsAre(u"ORIGIN=A1", u"Site=1"));
    EXPECT_EQ(Decoder.ResultValue, u"23.4");
    EXPECT_EQ(Decoder.ResultUnit, u"ms");
    EXPECT_FALSE(NextResult());
}

TEST_F(Decoding, TakesAnEmptyValueForAnEmptyText) {
    EXPECT_THAT(ValueAndUnitOf(u"[RESULT_VALUE \"\"]"), ElementsAre(u"", u"ms"));
    EXPECT_EQ(TextsOfSlots(Decoder).Values[0], u"1||ms");
}

TEST_F(Decoding, TakesATagWithoutQuotesForAnEmptyText) {
    EXPECT_THAT(ValueAndUnitOf(u"[RESULT_VALUE 23.4]"), ElementsAre(u"", u"ms"));
}

TEST_F(Decoding, TakesATagWithOneQuoteForAnEmptyText) {
    EXPECT_THAT(ValueAndUnitOf(u"[RESULT_VALUE \"23.4]"), ElementsAre(u"", u"ms"));
}

TEST_F(Decoding, KeepsQuotesInsideAValue) {
    EXPECT_THAT(ValueAndUnitOf(u"[RESULT_VALUE \"a\"b\"]"), ElementsAre(u"a\"b", u"ms"));
}

TEST_F(Decoding, TakesTheTextBehindABarForTheUnit) {
    EXPECT_THAT(ValueAndUnitOf(u"[RESULT_VALUE \"5|V\"]"), ElementsAre(u"5", u"V"));
}

TEST_F(Decoding, MakesTwoOfATypeAndOfAVariableWithABar) {
    Decode({u"[DESCRIPTIVE_VAR \"Site=1|2\"]", u"[RESULT_TYPE \"Al|pha\"]", u"[RESULT_UNIT \"ms\"]"});
    ASSERT_TRUE(NextResult());
    EXPECT_THAT(Decoder.ResultTypes, ElementsAre(u"Al", u"pha"));
    EXPECT_THAT(Decoder.ResultVars, ElementsAre(u"ORIGIN=", u"Site=1", u"2"));
}

TEST_F(Decoding, GivesAResultWithoutATypeOneEmptyType) {
    Decode({u"[RESULT_VALUE \"1\"]", u"[RESULT_UNIT \"ms\"]"});
    EXPECT_EQ(TextsOfSlots(Decoder).Types[0], u"1|");
    ASSERT_TRUE(NextResult());
    EXPECT_THAT(Decoder.ResultTypes, ElementsAre(u""));
}

TEST_F(Decoding, AcceptsAnEmptyBlobAndLeavesOnlyTheFreeSlot) {
    EXPECT_TRUE(Decode({}));
    EXPECT_EQ(Decoder.SlotCount, 1);
    EXPECT_THAT(TextsOfSlots(Decoder).Types, ElementsAre(u""));
    EXPECT_FALSE(NextResult());
    EXPECT_EQ(Decoder.SlotCount, 0);
    EXPECT_EQ(Decoder.SlotCursor, 0);
}

TEST_F(Decoding, StripsTheNumbersOfTheTenthSlotAndOfTheHundredth) {
    for (int i = 1; i <= 100; ++i)
        ASSERT_TRUE(Decode({u"[RESULT_TYPE \"7|8\"]", u"[RESULT_VALUE \"9\"]", u"[RESULT_UNIT \"ms\"]"}));
    EXPECT_EQ(TextsOfSlots(Decoder).Types[9], u"10|7|8");
    EXPECT_EQ(TextsOfSlots(Decoder).Values[99], u"100|9|ms");
    for (int i = 1; i <= 100; ++i) {
        ASSERT_TRUE(NextResult());
        ASSERT_THAT(Decoder.ResultTypes, ElementsAre(u"7", u"8")) << "slot " << i;
        ASSERT_EQ(Decoder.ResultValue, u"9") << "slot " << i;
    }
}

TEST_F(Decoding, ConnectsToAnyIdentity) {
    Connect(u"A1");
    EXPECT_EQ(Decoder.ConnectedID, u"A1");
    EXPECT_TRUE(Decoder.ConnectSeen);
    Connect(u"B2");
    EXPECT_EQ(Decoder.ConnectedID, u"B2");
}

TEST_F(Decoding, RefusesEachOriginAfterAnEmptyIdentity) {
    Connect(u"A1");
    Connect(u"");
    EXPECT_EQ(Decoder.ConnectedID, u"");
    EXPECT_FALSE(Decode({u"[ORIGIN \"A1\"]"}));
    EXPECT_EQ(Decoder.BlobErrorCode, BlobError::NoConnection);
    EXPECT_EQ(Decoder.BlobErrorText, u"BLob received without connect");
}

TEST_F(Decoding, RefusesAnotherOriginUntilTheNextConnect) {
    Connect(u"A1");
    EXPECT_FALSE(Decode({u"[ORIGIN \"B2\"]", u"[RESULT_UNIT \"ms\"]"}));
    EXPECT_EQ(Decoder.BlobErrorCode, BlobError::OriginMismatch);
    EXPECT_EQ(Decoder.BlobErrorText, u"Origin doesn't match connected ID");
    EXPECT_FALSE(NextResult());
    Connect(u"B2");
    EXPECT_TRUE(Decode({u"[ORIGIN \"B2\"]"}));
}

TEST_F(Decoding, ComparesTheOriginWithRegardToCase) {
    Connect(u"A1");
    EXPECT_FALSE(Decode({u"[ORIGIN \"a1\"]"}));
}

TEST_F(Decoding, AcceptsABlobWithoutAnOriginWhetherConnectedOrNot) {
    EXPECT_TRUE(DecodeBlob(BlobOfValue(u"1")));
    Connect(u"A1");
    EXPECT_TRUE(DecodeBlob(BlobOfValue(u"2")));
    EXPECT_FALSE(Decoder.ConnectSeen);
    EXPECT_EQ(Decoder.ConnectedID, u"A1");
    EXPECT_THAT(DeliverValues(), ElementsAre(u"1", u"2"));
}

TEST_F(Decoding, FindsTheOriginInTheMiddleOfALine) {
    Connect(u"A1");
    EXPECT_FALSE(Decode({u"sent by [ORIGIN \"B2\"]"}));
}

TEST_F(Decoding, TakesTheLastOfTwoOrigins) {
    Connect(u"A1");
    EXPECT_TRUE(Decode({u"[ORIGIN \"B2\"]", u"[ORIGIN \"A1\"]"}));
    EXPECT_FALSE(Decode({u"[ORIGIN \"A1\"]", u"[ORIGIN \"B2\"]"}));
}

TEST_F(Decoding, DropsAllOtherTagsOfAConnectingBlob) {
    EXPECT_TRUE(Decode({u"[RESULT_VALUE \"1\"]", u"[RESULT_UNIT \"ms\"]", u"[CONNECT \"A1\"]", u"[ORIGIN \"B2\"]",
                        u"[RESULT_VALUE \"2\"]", u"[RESULT_UNIT \"ms\"]"}));
    EXPECT_EQ(Decoder.ConnectedID, u"A1");
    EXPECT_FALSE(NextResult());
}

TEST_F(Decoding, TakesTheLastOfTwoConnectTags) {
    Decode({u"[CONNECT \"A1\"]", u"[CONNECT \"B2\"]"});
    EXPECT_EQ(Decoder.ConnectedID, u"B2");
}

TEST_F(Decoding, FindsTagsInAnyCase) {
    EXPECT_TRUE(DecodeBlob(Joined({u"[blob]", u"[Connect \"A1\"]", u"[/BLOB]"})));
    EXPECT_TRUE(
        DecodeBlob(Joined({u"[BLOB]", u"[oriGIN \"A1\"]", u"[descriptive_var \"Site=1\"]", u"[Result_Type \"Alpha\"]",
                           u"[result_VALUE \"5\"]", u"[result_unit \"V\"]", u"[/blob]"})));
    ASSERT_TRUE(NextResult());
    EXPECT_THAT(Decoder.ResultTypes, ElementsAre(u"Alpha"));
    EXPECT_THAT(Decoder.ResultVars, ElementsAre(u"ORIGIN=A1", u"Site=1"));
    EXPECT_EQ(Decoder.ResultValue, u"5");
    EXPECT_EQ(Decoder.ResultUnit, u"V");
}

TEST_F(Decoding, IgnoresATagBehindBlanks) {
    EXPECT_TRUE(Decode({u" [RESULT_UNIT \"ms\"]"}));
    EXPECT_FALSE(NextResult());
}

TEST_F(Decoding, RefusesATextThatDoesNotBeginWithTheStartTag) {
    EXPECT_FALSE(DecodeBlob(u""));
    EXPECT_FALSE(DecodeBlob(u" " + Blob({})));
}

TEST_F(Decoding, RefusesATextWithoutTheExactEndLine) {
    EXPECT_FALSE(DecodeBlob(u"[BLob]\r[/BLob]"));
    EXPECT_FALSE(DecodeBlob(u"[BLob]\r[/BLob extra]\r"));
    EXPECT_FALSE(DecodeBlob(u"[BLob]\r[/BLob] \r"));
}

TEST_F(Decoding, FindsTheEndLineAnywhere) {
    EXPECT_TRUE(DecodeBlob(u"[BLob]\rnoise [/blob]\r[/BLob extra]\r"));
}

TEST_F(Decoding, LetsALaterResultInheritWhatItDoesNotState) {
    Decode({u"[RESULT_TYPE \"Alpha\"]", u"[RESULT_VALUE \"1\"]", u"[RESULT_UNIT \"ms\"]", u"[RESULT_UNIT \"s\"]",
            u"[RESULT_VALUE \"2\"]", u"[RESULT_UNIT \"V\"]"});
    EXPECT_THAT(TextsOfSlots(Decoder).Types, ElementsAre(u"1|Alpha", u"2|Alpha", u"3|Alpha", u""));
    EXPECT_THAT(TextsOfSlots(Decoder).Values, ElementsAre(u"1|1|ms", u"2|1|s", u"3|2|V", u""));
}

TEST_F(Decoding, GivesAVariableBetweenTwoResultsToTheLaterOnly) {
    Decode({u"[RESULT_UNIT \"ms\"]", u"[DESCRIPTIVE_VAR \"Site=1\"]", u"[RESULT_UNIT \"ms\"]"});
    EXPECT_THAT(TextsOfSlots(Decoder).Vars, ElementsAre(u"1|ORIGIN=", u"2|ORIGIN=|Site=1", u""));
}

/// Returns the number of characters in all slots.
std::size_t Held() {
    std::size_t held = 0;
    for (const ResultSlot& slot : Decoder.Slots)
        held += slot.Types.size() + slot.Vars.size() + slot.Value.size() + slot.Unit.size();
    return held;
}

Text VariableLine(std::int32_t number) {
    return u"[DESCRIPTIVE_VAR \"V" + modStringTools::NumberText(number) + u"x=1\"]\r";
}

// A copy of the variables, the types and the value in each slot would be a billion characters.
TEST_F(Decoding, KeepsWhatManyResultsHaveInCommonOnce) {
    constexpr std::int32_t Count = 3000;
    const Text longText(200000, u'~');
    Text text = u"[BLob]\r[RESULT_TYPE \"" + longText + u"\"]\r[RESULT_VALUE \"" + longText + u"\"]\r";
    for (std::int32_t i = 0; i < Count; ++i)
        text += VariableLine(i);
    for (std::int32_t i = 0; i < Count; ++i)
        text += u"[RESULT_UNIT \"ms\"]\r";
    text += u"[/BLob]\r";
    ASSERT_TRUE(DecodeBlob(text));
    EXPECT_EQ(Decoder.SlotCount, Count + 1);
    EXPECT_LT(Held(), 2 * text.size());
    ASSERT_TRUE(NextResult());
    ASSERT_TRUE(NextResult());
    EXPECT_EQ(Decoder.ResultVars.size(), static_cast<std::size_t>(Count + 1));
    EXPECT_EQ(Decoder.ResultVars.back(), u"V2999x=1");
    EXPECT_EQ(Decoder.ResultValue, longText);
}

TEST_F(Decoding, KeepsOfEachResultsVariablesThoseAloneThatAreNew) {
    constexpr std::int32_t Count = 2000;
    Text text = u"[BLob]\r";
    for (std::int32_t i = 0; i < Count; ++i)
        text += VariableLine(i) + u"[RESULT_UNIT \"ms\"]\r";
    text += u"[/BLob]\r";
    ASSERT_TRUE(DecodeBlob(text));
    EXPECT_LT(Held(), 2 * text.size());
    std::size_t result = 0;
    while (NextResult()) {
        ++result;
        ASSERT_EQ(Decoder.ResultVars.size(), result + 1);
    }
    EXPECT_EQ(result, static_cast<std::size_t>(Count));
}

TEST_F(Decoding, TakesTheTagsOfAResultInAnyOrderBeforeTheUnit) {
    Decode({u"[RESULT_VALUE \"5\"]", u"[RESULT_TYPE \"Alpha\"]", u"[RESULT_UNIT \"V\"]", u"[DESCRIPTIVE_VAR \"A=1\"]"});
    EXPECT_THAT(TextsOfSlots(Decoder).Types, ElementsAre(u"1|Alpha", u""));
    EXPECT_THAT(TextsOfSlots(Decoder).Values, ElementsAre(u"1|5|V", u""));
    EXPECT_THAT(TextsOfSlots(Decoder).Vars, ElementsAre(u"1|ORIGIN=", u""));
}

TEST_F(Decoding, PartsTypeNamesOnlyAtQuoteBlankQuote) {
    Decode({u"[RESULT_TYPE \"Alpha\" \"x1\" \"x2\"  \"y\"]", u"[RESULT_UNIT \"ms\"]"});
    NextResult();
    EXPECT_THAT(Decoder.ResultTypes, ElementsAre(u"Alpha", u"x1", u"x2\"  \"y"));
}

TEST_F(Decoding, CollectsTheSlotsOfSeveralBlobsInOrder) {
    DecodeBlob(BlobOfValue(u"1"));
    Decode({});
    DecodeBlob(BlobOfValue(u"2"));
    EXPECT_EQ(Decoder.SlotCount, 3);
    EXPECT_THAT(DeliverValues(), ElementsAre(u"1", u"2"));
}

TEST_F(Decoding, KeepsTheSlotsWhenALaterBlobIsRefused) {
    DecodeBlob(BlobOfValue(u"1"));
    ASSERT_FALSE(Decode({u"[ORIGIN \"B2\"]", u"[RESULT_VALUE \"2\"]", u"[RESULT_UNIT \"ms\"]"}));
    DecodeBlob(BlobOfValue(u"3"));
    EXPECT_THAT(DeliverValues(), ElementsAre(u"1", u"3"));
}

TEST_F(Decoding, DeliversBehindTheCursorWhatComesDuringADelivery) {
    DecodeBlob(BlobOfValue(u"1"));
    ASSERT_TRUE(NextResult());
    DecodeBlob(BlobOfValue(u"2"));
    EXPECT_THAT(DeliverValues(), ElementsAre(u"2"));
}

TEST_F(Decoding, NumbersSlotsFromOneAgainWhenAllWereDelivered) {
    DecodeBlob(BlobOfValue(u"1"));
    DeliverValues();
    DecodeBlob(BlobOfValue(u"2"));
    EXPECT_THAT(TextsOfSlots(Decoder).Values, ElementsAre(u"1|2|ms", u""));
}

TEST_F(Decoding, HasNoResultAtTheStart) {
    EXPECT_FALSE(NextResult());
    EXPECT_THAT(Decoder.ResultTypes, IsEmpty());
}

TEST_F(Decoding, AddsASlotOnlyWhenTheLastOneIsTaken) {
    AddResultSlot();
    AddResultSlot();
    EXPECT_EQ(Decoder.SlotCount, 1);
}

struct VariableRow {
    Text List;
    Text Variable;
    Text Expected;
};

void PrintTo(const VariableRow& row, std::ostream* out) {
    *out << modStringTools::ToBytes(row.List) << " with " << modStringTools::ToBytes(row.Variable);
}

class DescriptiveVariable : public testing::TestWithParam<VariableRow> {};

TEST_P(DescriptiveVariable, IsPutIntoTheList) {
    Text list = GetParam().List;
    SetDescriptiveVar(list, GetParam().Variable);
    EXPECT_EQ(list, GetParam().Expected);
}

INSTANTIATE_TEST_SUITE_P(ByName, DescriptiveVariable,
                         testing::Values(VariableRow{u"ORIGIN=X", u"A=1", u"ORIGIN=X|A=1"},
                                         VariableRow{u"ORIGIN=X|A=1|B=2", u"A=9", u"ORIGIN=X|A=9|B=2"},
                                         VariableRow{u"ORIGIN=X|A=1|B=2|C=3", u"A=9", u"ORIGIN=X|A=9|C=3"},
                                         VariableRow{u"ORIGIN=X|A=1|B=22", u"B=5", u"ORIGIN=X|A=1|B=5"},
                                         VariableRow{u"ORIGIN=X|A=1|B=2", u"B=5", u"ORIGIN=X|A=1|B=52"},
                                         VariableRow{u"ORIGIN=X|DATA=1|Q=1", u"A=2", u"ORIGIN=X|DATA=2|Q=1"},
                                         VariableRow{u"ORIGIN=X|site=11", u"SITE=2", u"ORIGIN=X|SITE=2"},
                                         VariableRow{u"ORIGIN=X|A=11", u"A=", u"ORIGIN=X|A=11|A="},
                                         VariableRow{u"ORIGIN=X|ABC=11", u"A.C=2", u"ORIGIN=X|A.C=2"},
                                         VariableRow{u"ORIGIN=X|A.C=11", u"A\\.C=2", u"ORIGIN=X|A\\.C=2"},
                                         VariableRow{u"ORIGIN=X", u"no value", u"ORIGIN=X|no value"},
                                         VariableRow{u"ORIGIN=XY", u"=2", u"ORIGIN=2"}));

struct QuotedRow {
    Text Line;
    Text Expected;
};

void PrintTo(const QuotedRow& row, std::ostream* out) {
    *out << modStringTools::ToBytes(row.Line);
}

class Quoted : public testing::TestWithParam<QuotedRow> {};

TEST_P(Quoted, IsWhatStandsBetweenTheFirstAndTheLastQuote) {
    EXPECT_EQ(QuotedValue(GetParam().Line), GetParam().Expected);
}

INSTANTIATE_TEST_SUITE_P(Lines, Quoted,
                         testing::Values(QuotedRow{u"", u""}, QuotedRow{u"abc", u""}, QuotedRow{u"\"", u""},
                                         QuotedRow{u"\"a", u""}, QuotedRow{u"a\"", u""}, QuotedRow{u"\"\"", u""},
                                         QuotedRow{u"[T \"\"]", u""}, QuotedRow{u"\"a\"", u"a"},
                                         QuotedRow{u"[T \"a b\"]", u"a b"}, QuotedRow{u"\"\"\"", u"\""},
                                         QuotedRow{u"[T \"a\" \"b\"]", u"a\" \"b"}));

} // namespace
} // namespace modBLob
