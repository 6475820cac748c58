// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/stream.h"
#include "tests/unit/apps/quorin-instrument/instrument_support.h"

#include <gtest/gtest.h>

namespace instrument {
namespace {

using namespace std::string_literals;

MadeUpStream ClimateStream(std::int64_t count, std::uint32_t seed = 1) {
    MadeUpStream stream;
    stream.Kinds = ClimateKinds();
    stream.Count = count;
    stream.Seed = seed;
    return stream;
}

TEST(MadeUpStream, IntroducesItselfFirst) {
    EXPECT_EQ(RecordsOf(MakeUp(ClimateStream(1))).at(0), "[BLob]\r\n[CONNECT \"QI-0001\"]\r\n[/BLob]\r\n");
}

// These bytes are the same on every machine and must never change, because recordings and demonstrations name only a
// seed.
TEST(MadeUpStream, ResultOfAKnownSeedIsKnownToTheByte) {
    EXPECT_EQ(RecordsOf(MakeUp(ClimateStream(2, 6))).at(2), "[BLob]\r\n"
                                                            "[ORIGIN \"QI-0001\"]\r\n"
                                                            "[DESCRIPTIVE_VAR \"Site=North wall\"]\r\n"
                                                            "[DESCRIPTIVE_VAR \"Operator=Ada\"]\r\n"
                                                            "[DESCRIPTIVE_VAR \"Probe=Air\"]\r\n"
                                                            "[RESULT_TYPE \"Temperature\" \"T1\"]\r\n"
                                                            "[RESULT_VALUE \"20.6\"]\r\n"
                                                            "[RESULT_UNIT \"\xC2\xB0"
                                                            "C\"]\r\n"
                                                            "[/BLob]\r\n");
}

TEST(MadeUpStream, HoldsAsManyResultsAsAskedFor) {
    EXPECT_EQ(RecordsOf(MakeUp(ClimateStream(7))).size(), 8u);
}

TEST(MadeUpStream, OfCountZeroGoesOn) {
    const RecordSource source = MakeUp(ClimateStream(0));
    std::string record;
    for (int i = 0; i < 10'000; ++i) {
        ASSERT_TRUE(source(record));
    }
}

TEST(MadeUpStream, OtherSeedGivesOtherValues) {
    EXPECT_NE(RecordsOf(MakeUp(ClimateStream(6, 1))), RecordsOf(MakeUp(ClimateStream(6, 2))));
}

TEST(MadeUpStream, SendsItsTypesInTurn) {
    MadeUpStream stream = ClimateStream(3);
    ASSERT_TRUE(ReadKinds("Alpha=ms,Beta", stream.Kinds));
    const auto records = RecordsOf(MakeUp(stream));
    EXPECT_EQ(LineWith(records.at(1), "[RESULT_TYPE"), "[RESULT_TYPE \"Alpha\"]\r\n");
    EXPECT_EQ(LineWith(records.at(1), "[RESULT_UNIT"), "[RESULT_UNIT \"ms\"]\r\n");
    EXPECT_EQ(LineWith(records.at(2), "[RESULT_TYPE"), "[RESULT_TYPE \"Beta\"]\r\n");
    EXPECT_EQ(LineWith(records.at(2), "[RESULT_UNIT"), "[RESULT_UNIT \"\"]\r\n");
    EXPECT_EQ(LineWith(records.at(3), "[RESULT_TYPE"), "[RESULT_TYPE \"Alpha\"]\r\n");
}

TEST(MadeUpStream, StaysAtOneSiteForARoundOfTypes) {
    const auto records = RecordsOf(MakeUp(ClimateStream(60)));
    std::size_t moves = 0;
    for (std::size_t i = 2; i < records.size(); ++i) {
        const bool moved = LineWith(records[i], "[DESCRIPTIVE_VAR") != LineWith(records[i - 1], "[DESCRIPTIVE_VAR");
        EXPECT_FALSE(moved && i % 3 != 1) << "record " << i;
        moves += moved ? 1 : 0;
    }
    EXPECT_GT(moves, 0u);
}

TEST(MadeUpStream, KnownTypeKeepsWhatBelongsToItUnderAnotherUnit) {
    std::vector<ResultKind> kinds;
    ASSERT_TRUE(ReadKinds("Moisture=g", kinds));
    EXPECT_EQ(kinds.at(0).OtherName, "M1");
    EXPECT_EQ(kinds.at(0).Unit, "g");
}

class BadTypes : public testing::TestWithParam<const char*> {};

TEST_P(BadTypes, AreRefused) {
    std::vector<ResultKind> kinds;
    EXPECT_FALSE(ReadKinds(GetParam(), kinds));
}

INSTANTIATE_TEST_SUITE_P(Lists, BadTypes,
                         testing::Values("", ",", "Alpha,", ",Alpha", "=ms", "Al\"pha", "A|B", "Alpha=]", "A\r\nB"));

TEST(Recording, IsCutBehindEachClosingLine) {
    const auto records = RecordsOf(Recording("[BLob]\r\nA\r\n[/BLob]\r\n[blob]\n[/BLOB x]\nrest"));
    EXPECT_EQ(records, (std::vector<std::string>{"[BLob]\r\nA\r\n[/BLob]\r\n", "[blob]\n[/BLOB x]\n", "rest"}));
}

TEST(Recording, KeepsEveryByte) {
    const std::string bytes = "noise \0\xFF\r\n\n[/BLob]\r\n\r\n[BLob]\r\n [/BLob]\r\n[/BLob"s;
    std::string joined;
    for (const std::string& record : RecordsOf(Recording(bytes))) {
        joined += record;
    }
    EXPECT_EQ(joined, bytes);
}

TEST(Recording, ThatIsEmptyHasNoRecord) {
    EXPECT_TRUE(RecordsOf(Recording("")).empty());
}

TEST(ConnectRecord, IsKnownByItsTagInAnyCase) {
    EXPECT_TRUE(IsConnectRecord("[BLob]\r\n[connect \"A\"]\r\n[/BLob]\r\n"));
    EXPECT_FALSE(IsConnectRecord("[BLob]\r\n[ORIGIN \"[CONNECT\"]\r\n[/BLob]\r\n"));
}

} // namespace
} // namespace instrument
