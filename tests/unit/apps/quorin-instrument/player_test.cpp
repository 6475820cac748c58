// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/player.h"
#include "tests/unit/apps/quorin-instrument/instrument_support.h"

#include <gtest/gtest.h>

namespace instrument {
namespace {

using std::chrono::milliseconds;

const std::string Connect = "[BLob]\r\n[CONNECT \"A1\"]\r\n[/BLob]\r\n";
const std::string Result = "[BLob]\r\n[ORIGIN \"A1\"]\r\n[RESULT_UNIT \"ms\"]\r\n[/BLob]\r\n";

/// Records the pieces that it is sent, and fails at a given one.
class Listener final : public Outlet {
public:
    std::vector<std::string> Heard;
    std::size_t FailAt = 1000;

    Outcome Open() override { return Outcome::Done; }
    Outcome Send(std::string_view bytes) override {
        if (Heard.size() == FailAt) {
            return Fail("cut");
        }
        Heard.emplace_back(bytes);
        return Outcome::Done;
    }
    Outcome Finish(Linger) override { return Outcome::Done; }
};

class Player : public testing::Test {
protected:
    Outcome PlayRecords(const std::string& bytes) {
        return Play(Recording(bytes), Options, Outlet, [this](Microseconds pause) {
            Pauses.push_back(pause);
            return Pauses.size() < StopAtPause;
        });
    }

    std::string AllHeard() const {
        std::string all;
        for (const std::string& piece : Outlet.Heard) {
            all += piece;
        }
        return all;
    }

    PlayOptions Options;
    Listener Outlet;
    std::vector<Microseconds> Pauses;
    std::size_t StopAtPause = 1000;
};

TEST_F(Player, SendsAllBytesAtThePaceOfTheLine) {
    EXPECT_EQ(PlayRecords(Connect + Result), Outcome::Done);
    EXPECT_EQ(AllHeard(), Connect + Result);
    Microseconds time{0};
    for (const Microseconds pause : Pauses) {
        time += pause;
    }
    EXPECT_GE(time, TransmissionTime(Connect.size() + Result.size()));
}

TEST_F(Player, RestsOnlyBetweenResults) {
    Options.Fast = true;
    Options.Interval = milliseconds(700);
    PlayRecords(Connect + Result + Result);
    const Microseconds none{0};
    EXPECT_EQ(Pauses, (std::vector<Microseconds>{none, none, milliseconds(700), none}));
}

TEST_F(Player, CountsFaultsByResultsAlone) {
    Options.Fast = true;
    Options.Faults.LoseEndTag = 2;
    PlayRecords(Connect + Result + Result + Result);
    const std::string harmed = Result.substr(0, Result.find("[/BLob]"));
    EXPECT_EQ(Outlet.Heard, (std::vector<std::string>{Connect, Result, harmed, Result}));
}

TEST_F(Player, SplitsTheLinesOfTheRecordsThatAreToBeSplit) {
    Options.Fast = true;
    Options.Faults.SplitLines = 2;
    PlayRecords(Result + Result);
    EXPECT_EQ(Outlet.Heard.at(0), Result);
    EXPECT_GE(Outlet.Heard.size(), 9u);
    EXPECT_EQ(AllHeard(), Result + Result);
}

TEST_F(Player, DeliversWholeRecordsToAMailbox) {
    Options.InDeliveries = true;
    PlayRecords(Connect + Result);
    EXPECT_EQ(Outlet.Heard, (std::vector<std::string>{Connect, Result}));
}

TEST_F(Player, EndsWithTheOutlet) {
    Outlet.FailAt = 1;
    EXPECT_EQ(PlayRecords(Result), Outcome::Failed);
    EXPECT_EQ(Outlet.Problem(), "cut");
    EXPECT_EQ(Outlet.Heard.size(), 1u);
}

TEST_F(Player, EndsWhenToldToStop) {
    StopAtPause = 2;
    EXPECT_EQ(PlayRecords(Result), Outcome::Stopped);
    EXPECT_EQ(Outlet.Heard.size(), 2u);
}

TEST_F(Player, MeasuresTheSameWithFaultsAndWithout) {
    MadeUpStream stream;
    stream.Kinds = ClimateKinds();
    stream.Count = 9;
    Options.Fast = true;
    Options.Faults.Noise = 3;
    Options.Faults.DropLine = 3;
    Play(MakeUp(stream), Options, Outlet, [](Microseconds) { return true; });
    const auto whole = RecordsOf(MakeUp(stream));
    for (std::size_t i = 0; i < whole.size(); ++i) {
        EXPECT_EQ(Outlet.Heard.at(i) == whole[i], i == 0 || i % 3 != 0) << "record " << i;
    }
}

} // namespace
} // namespace instrument
