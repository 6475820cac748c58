// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/times.h"
#include "tests/support/running_instrument.h"

#include <gtest/gtest.h>

#include <vector>

namespace instrument {
namespace {

using std::chrono::milliseconds;

const std::string Recorded = "quorin-times 1\n0 [BLob]%0D%0A\n1500 %25%00%FF \n20 end\n";

class Ear final : public Outlet {
public:
    std::vector<std::string> Heard;

    Outcome Open() override { return Outcome::Done; }
    Outcome Send(std::string_view bytes) override {
        Heard.emplace_back(bytes);
        return Heard.size() == 3 ? Fail("full") : Outcome::Done;
    }
    Outcome Finish(Linger) override { return Outcome::Done; }
};

/// Returns the pauses in milliseconds.
std::vector<std::int64_t> PausesAt(double speed) {
    std::vector<TimedPiece> pieces;
    EXPECT_EQ(ReadTimes(Recorded, pieces), "");
    Ear ear;
    std::vector<std::int64_t> pauses;
    PlayTimes(pieces, speed, ear, [&pauses](Microseconds pause) {
        pauses.push_back(pause.count() / 1000);
        return true;
    });
    return pauses;
}

TEST(Times, AreReadWithTheirBytes) {
    std::vector<TimedPiece> pieces;
    ASSERT_EQ(ReadTimes(Recorded, pieces), "");
    ASSERT_EQ(pieces.size(), 3U);
    EXPECT_EQ(pieces[0].Bytes, "[BLob]\r\n");
    EXPECT_EQ(pieces[1].Bytes, std::string("%\0\xFF ", 4));
    EXPECT_EQ(pieces[1].Wait, milliseconds(1500));
    EXPECT_EQ(pieces[2].Bytes, "end");
}

TEST(Times, ArePlayedAsFastAsAskedFor) {
    EXPECT_EQ(PausesAt(1), (std::vector<std::int64_t>{0, 1500, 20}));
    EXPECT_EQ(PausesAt(10), (std::vector<std::int64_t>{0, 150, 2}));
    EXPECT_EQ(PausesAt(0.5), (std::vector<std::int64_t>{0, 3000, 40}));
    EXPECT_EQ(PausesAt(0), (std::vector<std::int64_t>{0, 0, 0}));
}

TEST(Times, EndWithTheOutletOrTheProcess) {
    std::vector<TimedPiece> pieces(4);
    Ear ear;
    EXPECT_EQ(PlayTimes(pieces, 1, ear, [](Microseconds) { return true; }), Outcome::Failed);
    EXPECT_EQ(ear.Heard.size(), 3U);
    Ear stopped;
    EXPECT_EQ(PlayTimes(pieces, 1, stopped, [](Microseconds) { return false; }), Outcome::Stopped);
    EXPECT_EQ(stopped.Heard.size(), 0U);
}

TEST(Times, OfAnotherFormAreRefused) {
    for (const char* line : {"x a", "-1 a", "1", " a", "1 %", "1 %0", "1 %0g", "1 %0d", "99999999999999 a", ""}) {
        std::vector<TimedPiece> pieces;
        EXPECT_EQ(ReadTimes(std::string("quorin-times 1\n") + line + "\n", pieces),
                  "line 2 is not milliseconds, a blank and bytes")
            << line;
    }
    std::vector<TimedPiece> pieces;
    EXPECT_EQ(ReadTimes("[BLob]\r\n", pieces), "its first line is not \"quorin-times 1\"");
}

TEST(Times, ArePlayedByTheProgram) {
    const TemporaryFolder place;
    WriteFile(place.Path("recorded"), Recorded);
    const auto start = std::chrono::steady_clock::now();
    RunningInstrument slow({"--print", "--times", "10", place.Path("recorded")});
    EXPECT_EQ(slow.ExitStatus(), 0);
    EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(150));
    EXPECT_EQ(slow.Output(), "[BLob]\r\n" + std::string("%\0\xFF end", 7));
}

TEST(Times, ThatAreMissingAreAFailure) {
    const TemporaryFolder place;
    WriteFile(place.Path("plain"), "[BLob]\r\n");
    RunningInstrument refused({"--print", "--times", "1", place.Path("plain")});
    EXPECT_EQ(refused.ExitStatus(), 1);
    EXPECT_EQ(refused.Errors(), "quorin-instrument: can't play " + place.Path("plain") +
                                    " with times: its first line is not \"quorin-times 1\"\n");
    EXPECT_EQ(refused.Output(), "");
}

} // namespace
} // namespace instrument
