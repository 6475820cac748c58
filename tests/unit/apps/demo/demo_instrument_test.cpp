// SPDX-License-Identifier: MIT
// The demonstration's instrument by itself: what it sends when, and what it says of it.
#include "apps/demo/demo_instrument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace apps {
namespace {

using testing::HasSubstr;

class LineInHand final : public DemoLine {
public:
    bool IsPlugged() const override { return Plugged; }
    bool IsHeard() const override { return Heard; }
    const std::string& Problem() const override { return Why; }
    bool Send(const std::string& text) override {
        Sent.push_back(text);
        return !Full;
    }

    bool Plugged = true, Heard = true, Full = false;
    std::string Why;
    std::vector<std::string> Sent;
};

struct OnItsLine {
    LineInHand Line;
    DemoInstrument Meter{Line};

    void StepTo(std::int64_t now, bool isAsked = false) { Meter.Step(now, isAsked); }
};

TEST(DemoInstrument, SendsTheKindsInTurnEach10Seconds) {
    OnItsLine meter;
    meter.Meter.Tick(true);
    for (std::int64_t now = 0; now < 41'000; now += 500)
        meter.StepTo(now);
    ASSERT_EQ(meter.Line.Sent.size(), 4U);
    EXPECT_THAT(meter.Line.Sent[0], HasSubstr("[RESULT_TYPE \"Moisture\" \"M1\"]"));
    EXPECT_THAT(meter.Line.Sent[1], HasSubstr("[RESULT_TYPE \"Temperature\" \"T1\"]"));
    EXPECT_THAT(meter.Line.Sent[2], HasSubstr("[RESULT_TYPE \"Humidity\" \"H1\"]"));
    EXPECT_THAT(meter.Line.Sent[3], HasSubstr("[RESULT_TYPE \"Moisture\" \"M1\"]"));
    EXPECT_EQ(meter.Meter.Words(), u"Simulated instrument: a result sent");
}

TEST(DemoInstrument, SendsNothingByItselfWithoutItsTick) {
    OnItsLine meter;
    meter.StepTo(0);
    meter.StepTo(60'000);
    EXPECT_TRUE(meter.Line.Sent.empty());
}

TEST(DemoInstrument, WaitsAnewAfterAPress) {
    OnItsLine meter;
    meter.Meter.Tick(true);
    meter.StepTo(0);
    meter.StepTo(8'000);
    meter.Meter.SendAll();
    meter.StepTo(9'000);
    meter.StepTo(18'900);
    EXPECT_EQ(meter.Line.Sent.size(), 1U) << "what was pressed";
    meter.StepTo(19'000);
    EXPECT_EQ(meter.Line.Sent.size(), 2U);
}

/// Whether a question is open at second 12, or no record listens: the interval begins there.
class WaitsAnew : public testing::TestWithParam<bool> {};

TEST_P(WaitsAnew, AfterWhatWasInTheWay) {
    OnItsLine meter;
    meter.Meter.Tick(true);
    meter.StepTo(0);
    meter.Line.Heard = GetParam();
    meter.StepTo(12'000, GetParam());
    meter.Line.Heard = true;
    meter.StepTo(21'900);
    EXPECT_TRUE(meter.Line.Sent.empty());
    meter.StepTo(22'000);
    EXPECT_EQ(meter.Line.Sent.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(QuestionOrNoRecord, WaitsAnew, testing::Bool());

TEST(DemoInstrument, SaysWhatBecameOfTheLastPress) {
    OnItsLine meter;
    EXPECT_EQ(meter.Meter.Words(), u"Simulated instrument: it sends what you press");
    meter.Meter.SendKind(1);
    EXPECT_EQ(meter.Meter.Words(), u"Simulated instrument: Temperature sent");
    meter.Line.Full = true;
    meter.Meter.SendOfAStranger();
    EXPECT_EQ(meter.Meter.Words(), u"Simulated instrument: the line is full, a stranger's reading was not sent whole");
    meter.Line.Heard = false;
    EXPECT_EQ(meter.Meter.Words(), u"Simulated instrument: no record listens");
    meter.Line.Heard = true;
    EXPECT_EQ(meter.Meter.Words(), u"Simulated instrument: it sends what you press") << "another record";
    meter.Line.Plugged = false;
    EXPECT_EQ(meter.Meter.Words(), u"Simulated instrument: unplugged");
    meter.Line.Why = "no room";
    EXPECT_EQ(meter.Meter.Words(), u"Simulated instrument: no room");
}

} // namespace
} // namespace apps
