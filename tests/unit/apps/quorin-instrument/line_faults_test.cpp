// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/faults.h"
#include "tests/unit/apps/quorin-instrument/instrument_support.h"

#include <gtest/gtest.h>

namespace instrument {
namespace {

const std::string Result = "[BLob]\r\n[ORIGIN \"A1\"]\r\n[RESULT_TYPE \"Alpha\"]\r\n[RESULT_VALUE \"1\"]\r\n"
                           "[RESULT_UNIT \"ms\"]\r\n[/BLob]\r\n";

std::string Harm(const FaultPlan& plan, std::int64_t number = 1, std::uint32_t seed = 1) {
    std::mt19937 engine(seed);
    return Misbehave(Result, number, plan, engine);
}

struct EveryRow {
    int Every;
    std::int64_t Number;
    bool Falls;
};

void PrintTo(const EveryRow& row, std::ostream* out) {
    *out << "every " << row.Every << ", number " << row.Number;
}

class Every : public testing::TestWithParam<EveryRow> {};

TEST_P(Every, FallsOnItsRecords) {
    EXPECT_EQ(FallsOn(GetParam().Every, GetParam().Number), GetParam().Falls);
}

INSTANTIATE_TEST_SUITE_P(Rows, Every,
                         testing::Values(EveryRow{0, 1, false}, EveryRow{0, 7, false}, EveryRow{1, 1, true},
                                         EveryRow{1, 2, true}, EveryRow{3, 1, false}, EveryRow{3, 2, false},
                                         EveryRow{3, 3, true}, EveryRow{3, 4, false}, EveryRow{3, 6, true}));

TEST(Faults, LeaveARecordAloneThatIsNotTheirs) {
    FaultPlan plan;
    plan.Noise = plan.WrongOrigin = plan.LoseEndTag = plan.DropLine = 2;
    EXPECT_EQ(Harm(plan, 1), Result);
    EXPECT_NE(Harm(plan, 2), Result);
}

TEST(Faults, WrongOriginNamesAnotherInstrument) {
    FaultPlan plan;
    plan.WrongOrigin = 1;
    EXPECT_EQ(Harm(plan), "[BLob]\r\n[ORIGIN \"STRANGER\"]\r\n[RESULT_TYPE \"Alpha\"]\r\n[RESULT_VALUE \"1\"]\r\n"
                          "[RESULT_UNIT \"ms\"]\r\n[/BLob]\r\n");
}

TEST(Faults, LostEndTagLosesItsLine) {
    FaultPlan plan;
    plan.LoseEndTag = 1;
    EXPECT_EQ(Harm(plan), Result.substr(0, Result.find("[/BLob]")));
}

TEST(Faults, DroppedLineIsOneOfThoseBetween) {
    FaultPlan plan;
    plan.DropLine = 1;
    std::size_t kinds[4] = {};
    for (std::uint32_t seed = 0; seed < 64; ++seed) {
        const std::string harmed = Harm(plan, 1, seed);
        ASSERT_EQ(LinesOf(harmed).size(), 5u);
        ASSERT_EQ(harmed.substr(0, 8), "[BLob]\r\n");
        ASSERT_EQ(harmed.substr(harmed.size() - 9), "[/BLob]\r\n");
        const char* tags[] = {"[ORIGIN", "[RESULT_TYPE", "[RESULT_VALUE", "[RESULT_UNIT"};
        for (std::size_t i = 0; i < 4; ++i) {
            kinds[i] += LineWith(harmed, tags[i]).empty() ? 1 : 0;
        }
    }
    for (const std::size_t times : kinds) {
        EXPECT_GT(times, 0u);
    }
}

TEST(Faults, DropNothingFromARecordWithNothingBetween) {
    FaultPlan plan;
    plan.DropLine = 1;
    std::mt19937 engine(1);
    EXPECT_EQ(Misbehave("[BLob]\r\n[/BLob]\r\n", 1, plan, engine), "[BLob]\r\n[/BLob]\r\n");
}

TEST(Faults, NoiseIsWholeLinesInFrontThatHoldNoTag) {
    FaultPlan plan;
    plan.Noise = 1;
    for (std::uint32_t seed = 0; seed < 200; ++seed) {
        const std::string harmed = Harm(plan, 1, seed);
        ASSERT_GT(harmed.size(), Result.size());
        ASSERT_EQ(harmed.substr(harmed.size() - Result.size()), Result);
        const std::string noise = harmed.substr(0, harmed.size() - Result.size());
        ASSERT_EQ(noise.find_first_of("[]"), std::string::npos);
        for (const std::string_view line : LinesOf(noise)) {
            ASSERT_EQ(line.substr(line.size() - 2), "\r\n");
        }
    }
}

TEST(Faults, OfOneSeedAreTheSameAgain) {
    FaultPlan plan;
    plan.Noise = plan.DropLine = 1;
    EXPECT_EQ(Harm(plan, 1, 5), Harm(plan, 1, 5));
    EXPECT_NE(Harm(plan, 1, 5), Harm(plan, 1, 6));
}

} // namespace
} // namespace instrument
