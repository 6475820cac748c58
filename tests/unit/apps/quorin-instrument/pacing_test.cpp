// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/pacing.h"
#include "apps/quorin-instrument/stream.h"

#include <gtest/gtest.h>

namespace instrument {
namespace {

using std::chrono::milliseconds;

const std::string Record = "[BLob]\r\n[ORIGIN \"A1\"]\r\n[RESULT_UNIT \"\xC2\xB0\"]\r\n[/BLob]\r\n";

std::string Joined(const std::vector<Piece>& pieces) {
    std::string bytes;
    for (const Piece& piece : pieces) {
        bytes += piece.Bytes;
    }
    return bytes;
}

Microseconds TimeOf(const std::vector<Piece>& pieces) {
    Microseconds time{0};
    for (const Piece& piece : pieces) {
        time += piece.PauseAfter;
    }
    return time;
}

bool CutsBehind(const std::vector<Piece>& pieces, std::string_view end) {
    for (const Piece& piece : pieces) {
        if (piece.Bytes.size() >= end.size() && piece.Bytes.substr(piece.Bytes.size() - end.size()) == end) {
            return true;
        }
    }
    return false;
}

TEST(Pacing, TakesOneSecondFor960Bytes) {
    EXPECT_EQ(TransmissionTime(960), Microseconds(1'000'000));
    EXPECT_EQ(TransmissionTime(1), Microseconds(1042));
    EXPECT_EQ(TransmissionTime(0), Microseconds(0));
}

TEST(Pacing, PutsTheRecordOnTheLineInSmallChunks) {
    const auto pieces = CutForLine(Record, false);
    EXPECT_EQ(Joined(pieces), Record);
    EXPECT_GE(pieces.size(), 3u);
    for (const Piece& piece : pieces) {
        EXPECT_LE(piece.Bytes.size(), 16u);
        EXPECT_EQ(piece.PauseAfter, TransmissionTime(piece.Bytes.size()));
    }
}

TEST(Pacing, IsOnePieceAtOnceWhenFast) {
    const auto pieces = CutForLine(Record, true);
    ASSERT_EQ(pieces.size(), 1u);
    EXPECT_EQ(pieces[0].Bytes, Record);
    EXPECT_EQ(pieces[0].PauseAfter, Microseconds(0));
}

TEST(SplitLines, BreakEachLineAndLoseNothing) {
    for (std::uint32_t seed = 0; seed < 100; ++seed) {
        std::mt19937 engine(seed);
        const auto pieces = CutThroughLines(Record, true, engine);
        ASSERT_EQ(Joined(pieces), Record);
        ASSERT_GE(pieces.size(), 8u) << "four lines, each in two pieces or more";
        ASSERT_LE(pieces.size(), 12u);
        ASSERT_GE(TimeOf(pieces), milliseconds(4 * 20)) << "a pause within each line";
    }
}

TEST(SplitLines, ComeAlsoInTheMiddleOfALineEndAndOfACharacter) {
    bool lineEnd = false;
    bool character = false;
    for (std::uint32_t seed = 0; seed < 1000; ++seed) {
        std::mt19937 engine(seed);
        const auto pieces = CutThroughLines(Record, true, engine);
        lineEnd = lineEnd || CutsBehind(pieces, "\r");
        character = character || CutsBehind(pieces, "\xC2");
    }
    EXPECT_TRUE(lineEnd);
    EXPECT_TRUE(character);
}

TEST(SplitLines, TakeAtLeastTheTimeOfTheLine) {
    std::mt19937 engine(1);
    EXPECT_GE(TimeOf(CutThroughLines(Record, false, engine)), TransmissionTime(Record.size()));
}

TEST(SplitLines, LeaveALineOfOneByteWhole) {
    std::mt19937 engine(1);
    EXPECT_EQ(CutThroughLines("\n\n", true, engine).size(), 2u);
}

TEST(MailboxPacing, IsOneDeliveryARecord) {
    std::mt19937 engine(1);
    const auto pieces = CutForMailbox(Record, false, false, engine);
    ASSERT_EQ(pieces.size(), 1u);
    EXPECT_EQ(pieces[0].Bytes, Record);
    EXPECT_EQ(pieces[0].PauseAfter, TransmissionTime(Record.size()));
}

TEST(MailboxPacing, PartsASplitRecordAtTheEndOfALine) {
    for (std::uint32_t seed = 0; seed < 50; ++seed) {
        std::mt19937 engine(seed);
        const auto pieces = CutForMailbox(Record, true, true, engine);
        ASSERT_EQ(pieces.size(), 2u);
        ASSERT_EQ(Joined(pieces), Record);
        ASSERT_EQ(pieces[0].Bytes.back(), '\n');
        ASSERT_FALSE(pieces[1].Bytes.empty());
    }
}

} // namespace
} // namespace instrument
