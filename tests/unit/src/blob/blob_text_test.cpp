// SPDX-License-Identifier: MIT
#include "src/blob/blob_text.h"

#include "src/blob/decoding.h"

#include <gtest/gtest.h>

namespace modBLob {
namespace {

/// Returns the readings that the decoder reads from the BLobs.
std::vector<platform::Reading> Read(const std::vector<Text>& blobs) {
    DecoderState decoder;
    for (const Text& blob : blobs)
        EXPECT_TRUE(DecodeBlob(decoder, blob));
    std::vector<platform::Reading> readings;
    while (NextResult(decoder))
        readings.push_back(CurrentResult(decoder));
    return readings;
}

/// The text between the start and end lines of a BLob. Its readings must be the same after they were written and read
/// again.
const Text Bodies[] = {
    u"[RESULT_TYPE \"Moisture\"]\r[RESULT_VALUE \"14.1\"]\r[RESULT_UNIT \"%\"]\r",
    u"[RESULT_TYPE \"Alpha\" \"x1\"]\r[RESULT_VALUE \"a \"quoted\" b\"]\r[RESULT_UNIT \"\"]\r",
    u"[RESULT_VALUE \"7|cm\"]\r[RESULT_UNIT \"%\"]\r",
    u"[RESULT_UNIT \"%\"]\r",
    u"[DESCRIPTIVE_VAR \"Site=Loft\"]\r[DESCRIPTIVE_VAR \"Operator=Cleo\"]\r[RESULT_UNIT \"%\"]\r",
    u"[DESCRIPTIVE_VAR \"DATA=1\"]\r[DESCRIPTIVE_VAR \"B=5\"]\r[DESCRIPTIVE_VAR \"A=22\"]\r[RESULT_UNIT \"%\"]\r",
    u"[RESULT_TYPE \"A\"]\r[RESULT_VALUE \"1\"]\r[RESULT_UNIT \"m\"]\r[RESULT_VALUE \"2\"]\r[RESULT_UNIT \"s\"]\r",
};

class WrittenReading : public testing::TestWithParam<Text> {};

TEST_P(WrittenReading, IsReadAsItWas) {
    const Text connect = u"[BLob]\r[CONNECT \"QI-1\"]\r[/BLob]\r";
    const auto readings = Read({connect, u"[BLob]\r" + GetParam() + u"[/BLob]\r"});
    ASSERT_FALSE(readings.empty());
    for (const platform::Reading& reading : readings) {
        const auto again = Read({connect, BlobOf(reading)});
        ASSERT_EQ(again.size(), 1U);
        EXPECT_EQ(again[0].Types, reading.Types);
        EXPECT_EQ(again[0].Value, reading.Value);
        EXPECT_EQ(again[0].Unit, reading.Unit);
        EXPECT_EQ(again[0].Variables, reading.Variables);
    }
}

INSTANTIATE_TEST_SUITE_P(Bodies, WrittenReading, testing::ValuesIn(Bodies),
                         [](const auto& row) { return "Body" + std::to_string(row.index); });

TEST(WrittenReading, NamesNoOriginIfItHadNone) {
    const auto readings = Read({u"[BLob]\r[RESULT_UNIT \"%\"]\r[/BLob]\r"});
    EXPECT_EQ(BlobOf(readings.at(0)).find(u"[ORIGIN"), Text::npos);
}

} // namespace
} // namespace modBLob
