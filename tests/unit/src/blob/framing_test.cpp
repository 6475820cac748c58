// SPDX-License-Identifier: MIT
#include "src/blob/framing.h"

#include "tests/unit/src/blob/blob_texts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace modBLob {
namespace {

using blob_texts::Blob;
using blob_texts::BlobOfValue;
using blob_texts::DeliverValues;
using blob_texts::Joined;
using testing::ElementsAre;
using testing::IsEmpty;

const Text& Buffer() {
    return Framing.BlobBuffer;
}

class BlobFraming : public testing::Test {
protected:
    BlobFraming() { Reset(); }

    static void Reset() {
        Decoder = {};
        Framing = {};
    }
};

TEST_F(BlobFraming, TakesACompleteBlobOutOfTheBuffer) {
    EXPECT_TRUE(ExtractBlobs(BlobOfValue(u"1")));
    EXPECT_EQ(Buffer(), u"");
    EXPECT_THAT(DeliverValues(), ElementsAre(u"1"));
}

TEST_F(BlobFraming, KeepsEachLineInTheStateThatItIsGiven) {
    struct {
        FramingState Framed;
        DecoderState Decoded;
    } first, second;
    EXPECT_FALSE(ExtractBlobs(first.Framed, first.Decoded, u"[BLob]\r[RESULT_VALUE \"1\"]\r"));
    EXPECT_TRUE(ExtractBlobs(second.Framed, second.Decoded, BlobOfValue(u"2")));
    EXPECT_TRUE(ExtractBlobs(first.Framed, first.Decoded, Joined({u"[RESULT_UNIT \"ms\"]", u"[/BLob]"})));
    ASSERT_TRUE(NextResult(first.Decoded));
    EXPECT_EQ(first.Decoded.ResultValue, u"1");
    ASSERT_TRUE(NextResult(second.Decoded));
    EXPECT_EQ(second.Decoded.ResultValue, u"2");
    EXPECT_FALSE(ResultsWait(Decoder)) << "the application's own";
    EXPECT_EQ(Buffer(), u"");
}

TEST_F(BlobFraming, LeavesNoiseAndLoneEndLinesAtTheHeadOfTheBuffer) {
    const Text noise = Joined({u"noise", u"[/BLob]", u"", u"more"});
    EXPECT_TRUE(ExtractBlobs(noise + BlobOfValue(u"1")));
    EXPECT_EQ(Buffer(), noise);
    EXPECT_TRUE(ExtractBlobs(BlobOfValue(u"2")));
    EXPECT_EQ(Buffer(), noise);
    EXPECT_THAT(DeliverValues(), ElementsAre(u"1", u"2"));
}

TEST_F(BlobFraming, KeepsAnOpenBlobUntilItsRestArrives) {
    EXPECT_FALSE(ExtractBlobs(u"[BLob]\r"));
    EXPECT_EQ(Buffer(), u"[BLob]\r");
    EXPECT_TRUE(ExtractBlobs(Joined({u"[RESULT_VALUE \"1\"]", u"[RESULT_UNIT \"ms\"]", u"[/BLob]"})));
    EXPECT_EQ(Buffer(), u"");
    EXPECT_THAT(DeliverValues(), ElementsAre(u"1"));
}

TEST_F(BlobFraming, DoesNotCloseABlobWithAnEndLineThatHasNoLineEndYet) {
    EXPECT_FALSE(ExtractBlobs(u"[BLob]\r[/BLob]"));
    EXPECT_EQ(Buffer(), u"[BLob]\r[/BLob]");
    EXPECT_TRUE(ExtractBlobs(u"\r"));
    EXPECT_EQ(Buffer(), u"");
}

TEST_F(BlobFraming, DoesNotOpenABlobWithAStartLineThatHasNoLineEndYet) {
    EXPECT_FALSE(ExtractBlobs(u"[/BLob]\r[BLob]"));
    EXPECT_EQ(Buffer(), u"[/BLob]\r[BLob]");
}

TEST_F(BlobFraming, TakesTagsInAnyCase) {
    EXPECT_TRUE(ExtractBlobs(u"[blob]\r[/BLOB]\r[BLOB]\r[/bloB]\r"));
    EXPECT_EQ(Buffer(), u"");
}

TEST_F(BlobFraming, TakesAStartLineWithAnythingBehindTheTag) {
    EXPECT_TRUE(ExtractBlobs(u"[BLob 2]\r[/BLob]\r[BLobber\r[/BLob]\r"));
    EXPECT_EQ(Buffer(), u"");
}

TEST_F(BlobFraming, DropsABlobWhoseEndLineHasMoreThanTheTag) {
    EXPECT_FALSE(ExtractBlobs(u"[BLob]\r[RESULT_UNIT \"ms\"]\r[/BLob extra]\r"));
    EXPECT_EQ(Buffer(), u"");
    EXPECT_FALSE(NextResult());
}

TEST_F(BlobFraming, TakesNoTagBehindBlanks) {
    const Text text = u" [BLob]\r[/BLob]\r[BLob]\r [/BLob]\r";
    EXPECT_FALSE(ExtractBlobs(text));
    EXPECT_EQ(Buffer(), text);
}

TEST_F(BlobFraming, HoldsBackTheResultsOfACallInWhichOneBlobFailed) {
    EXPECT_FALSE(ExtractBlobs(Blob({u"[ORIGIN \"A1\"]"}) + BlobOfValue(u"1")));
    EXPECT_EQ(Buffer(), u"");
    EXPECT_FALSE(ExtractBlobs(u""));
    EXPECT_TRUE(ExtractBlobs(BlobOfValue(u"2")));
    EXPECT_THAT(DeliverValues(), ElementsAre(u"1", u"2"));
}

TEST_F(BlobFraming, ReportsAFailureBehindASuccessToo) {
    EXPECT_FALSE(ExtractBlobs(BlobOfValue(u"1") + Blob({u"[ORIGIN \"A1\"]"})));
}

TEST_F(BlobFraming, FindsNothingInAnEmptyBuffer) {
    EXPECT_FALSE(ExtractBlobs(u""));
    EXPECT_EQ(Buffer(), u"");
}

TEST_F(BlobFraming, FindsNothingInATextWithoutAnyLineEnd) {
    EXPECT_FALSE(ExtractBlobs(u"[BLob]"));
    EXPECT_EQ(Buffer(), u"[BLob]");
}

TEST_F(BlobFraming, KeepsWhatFollowsTheLastBlob) {
    EXPECT_TRUE(ExtractBlobs(BlobOfValue(u"1") + u"noise\r[BLob]\r[RES"));
    EXPECT_EQ(Buffer(), u"noise\r[BLob]\r[RES");
}

TEST_F(BlobFraming, GivesUpAStartLineForALaterOne) {
    EXPECT_TRUE(ExtractBlobs(u"[BLob]\r[RESULT_VALUE \"1\"]\r" + BlobOfValue(u"2")));
    EXPECT_EQ(Buffer(), u"[BLob]\r[RESULT_VALUE \"1\"]\r");
    EXPECT_THAT(DeliverValues(), ElementsAre(u"2"));
}

TEST_F(BlobFraming, ClosesAStartLineThatWasGivenUpWithALaterEndLine) {
    EXPECT_TRUE(ExtractBlobs(u"noise\r[BLob]\r[RESULT_VALUE \"1\"]\r" + BlobOfValue(u"2") +
                             u"[RESULT_UNIT \"V\"]\r[/BLob]\r[/BLob]\r"));
    EXPECT_EQ(Buffer(), u"noise\r[/BLob]\r");
    EXPECT_THAT(TextsOfSlots(Decoder).Values, ElementsAre(u"1|2|ms", u"2|1|V", u""));
}

TEST_F(BlobFraming, ClosesAStartLineThatWasGivenUpInALaterCall) {
    ExtractBlobs(u"[BLob]\r[RESULT_VALUE \"1\"]\r" + BlobOfValue(u"2"));
    EXPECT_TRUE(ExtractBlobs(u"[RESULT_UNIT \"ms\"]\r[/BLob]\r"));
    EXPECT_EQ(Buffer(), u"");
    EXPECT_THAT(DeliverValues(), ElementsAre(u"2", u"1"));
}

TEST_F(BlobFraming, LeavesTheGivenTextAlone) {
    const Text received = BlobOfValue(u"1");
    const Text before = received;
    ExtractBlobs(received);
    EXPECT_EQ(received, before);
}

struct LineEndRow {
    Text Received;
    Text Kept;
};

void PrintTo(const LineEndRow& row, std::ostream* out) {
    *out << testing::PrintToString(row.Received);
}

class LineEnds : public testing::TestWithParam<LineEndRow> {};

TEST_P(LineEnds, BecomeCarriageReturns) {
    Framing = {};
    ExtractBlobs(GetParam().Received);
    EXPECT_EQ(Buffer(), GetParam().Kept);
}

INSTANTIATE_TEST_SUITE_P(OfEachKind, LineEnds,
                         testing::Values(LineEndRow{u"a\rb\r", u"a\rb\r"}, LineEndRow{u"a\nb\n", u"a\rb\r"},
                                         LineEndRow{u"\r\na\r\n\r\nb\r\n", u"\ra\r\rb\r"},
                                         LineEndRow{u"a\nb\r\nc\n", u"a\nb\rc\n"}, LineEndRow{u"a\r\n\nb", u"a\r\nb"},
                                         LineEndRow{u"a\r\r\nb", u"a\r\rb"}, LineEndRow{u"a\n\rb", u"a\r\rb"}));

TEST_F(BlobFraming, TakesUpAPairThatTheCallBeforeLeftBehind) {
    ExtractBlobs(u"a\r\n\nb");
    ASSERT_EQ(Buffer(), u"a\r\nb");
    ExtractBlobs(u"\nc");
    EXPECT_EQ(Buffer(), u"a\rb\nc");
}

TEST_F(BlobFraming, JoinsAPairThatCameInTwoPieces) {
    ExtractBlobs(u"a\r");
    ExtractBlobs(u"\nb\n");
    EXPECT_EQ(Buffer(), u"a\rb\n");
}

// The first half of the pair was removed with the BLob. Its second half remains, before the next start line, and is no
// line end.
TEST_F(BlobFraming, MissesAStartLineBehindTheSecondHalfOfASplitPair) {
    ExtractBlobs(u"[BLob]\r\n[/BLob]\r");
    EXPECT_FALSE(ExtractBlobs(u"\n[BLob]\r\n[/BLob]\r\n"));
    EXPECT_EQ(Buffer(), u"\n[BLob]\r[/BLob]\r");
}

TEST_F(BlobFraming, TurnsEarlierLineFeedsIntoLineEndsOnlyInOneCall) {
    ExtractBlobs(u"a\n[BLob]\nb\r\n");
    ASSERT_EQ(Buffer(), u"a\n[BLob]\nb\r");
    EXPECT_TRUE(ExtractBlobs(u"[/BLob]\r"));
    EXPECT_EQ(Buffer(), u"a\r");
}

TEST_F(BlobFraming, LeavesEarlierLineFeedsAsLongAsPairsCome) {
    ExtractBlobs(u"a\n[BLob]\nb\r\n");
    EXPECT_FALSE(ExtractBlobs(u"[/BLob]\r\n"));
    EXPECT_TRUE(ExtractBlobs(BlobOfValue(u"1") + u"\r\n"));
    EXPECT_EQ(Buffer(), u"a\n[BLob]\nb\r[/BLob]\r\r");
}

// The first call leaves a pair before the start line, which is not found for that reason. The second call turns the
// pair into one line end.
TEST_F(BlobFraming, FindsAStartLineOnceThePairInFrontOfItIsTakenUp) {
    EXPECT_FALSE(ExtractBlobs(u"a\r\n\n[BLob]\r[/BLob]\r"));
    ASSERT_EQ(Buffer(), u"a\r\n[BLob]\r[/BLob]\r");
    EXPECT_TRUE(ExtractBlobs(u""));
    EXPECT_EQ(Buffer(), u"a\r");
}

class SplitStreams : public BlobFraming, public testing::WithParamInterface<Text> {
protected:
    static Text Stream() {
        const Text& end = GetParam();
        return Joined({u"noise", u"[/BLob]"}, end) + Blob({u"[CONNECT \"A1\"]"}, end) +
               Blob({u"[ORIGIN \"A1\"]", u"[RESULT_VALUE \"1\"]", u"[RESULT_UNIT \"ms\"]"}, end) +
               Joined({u"[BLob]", u"[RESULT_VALUE \"2\"]"}, end) +
               Blob({u"[RESULT_VALUE \"3\"]", u"[RESULT_UNIT \"ms\"]"}, end) +
               Joined({u"[RESULT_UNIT \"ms\"]", u"[/BLob]", u"tail"}, end);
    }

    /// Returns the results of the stream when it comes in three pieces, which end at the two positions and at its end.
    static std::vector<Text> ResultsInPieces(const Text& stream, std::size_t first, std::size_t second) {
        Reset();
        ExtractBlobs(stream.substr(0, first));
        ExtractBlobs(stream.substr(first, second - first));
        ExtractBlobs(stream.substr(second));
        return DeliverValues();
    }
};

TEST_P(SplitStreams, GiveTheSameResultsWhereverTheyAreSplit) {
    const Text stream = Stream();
    for (std::size_t first = 0; first <= stream.size(); ++first) {
        for (std::size_t second = first; second <= stream.size(); second += 7) {
            ASSERT_THAT(ResultsInPieces(stream, first, second), ElementsAre(u"1", u"3", u"2"))
                << "split at " << first << " and " << second;
            ASSERT_EQ(Buffer(), u"noise\r[/BLob]\rtail\r") << "split at " << first << " and " << second;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(LineEnds, SplitStreams, testing::Values(u"\r", u"\n"));

TEST_F(BlobFraming, GivesTheSameResultsHoweverWholeLinesAreSplit) {
    const Text stream = Blob({u"[RESULT_VALUE \"1\"]", u"[RESULT_UNIT \"ms\"]"}, u"\r\n") +
                        Blob({u"[RESULT_VALUE \"2\"]", u"[RESULT_UNIT \"ms\"]"}, u"\r\n");
    for (std::size_t pair = stream.find(u"\r\n"); pair != Text::npos; pair = stream.find(u"\r\n", pair + 1)) {
        Reset();
        ExtractBlobs(stream.substr(0, pair + 2));
        ExtractBlobs(stream.substr(pair + 2));
        ASSERT_THAT(DeliverValues(), ElementsAre(u"1", u"2")) << "split at " << pair + 2;
        ASSERT_EQ(Buffer(), u"");
    }
}

// This test would not end if the scan began at the first line again for each BLob.
TEST_F(BlobFraming, TakesThousandsOfBlobsBehindMegabytesOfNoise) {
    constexpr std::size_t Blobs = 10000;
    Text noise;
    while (noise.size() < 2000000)
        noise += u"a line of noise that no BLob holds\r";
    Text stream = noise;
    for (std::size_t i = 0; i < Blobs; ++i)
        stream += BlobOfValue(u"1") + u"between\r";
    EXPECT_TRUE(ExtractBlobs(stream));
    EXPECT_EQ(DeliverValues().size(), Blobs);
    EXPECT_EQ(Buffer().size(), noise.size() + Blobs * 8);
}

/// Some megabytes of noise that are in the buffer already. The test would not end if each of these many calls searched
/// the noise again.
class OldNoise : public BlobFraming {
protected:
    static constexpr std::size_t Calls = 20000;

    static void Hear(TextView line) {
        Text noise;
        while (noise.size() < 4000000)
            noise += line;
        ExtractBlobs(noise);
    }
};

TEST_F(OldNoise, IsGoneThroughOnce) {
    Hear(u"a line of noise that no BLob holds\r\n");
    const std::size_t size = Buffer().size();
    for (std::size_t i = 0; i < Calls; ++i)
        ASSERT_TRUE(ExtractBlobs(u"[BLob]\r\n[/BLob]\r\n"));
    EXPECT_EQ(Buffer().size(), size);
}

TEST_F(OldNoise, IsGoneThroughOnceWithLineFeedsInIt) {
    Hear(u"a line of noise\nand another one\r\n");
    for (std::size_t i = 0; i < Calls; ++i)
        ASSERT_TRUE(ExtractBlobs(u"[BLob]\r\n[/BLob]\r\n"));
    EXPECT_EQ(Buffer().find(u'\n'), 15U);
    ASSERT_TRUE(ExtractBlobs(u"[BLob]\r[/BLob]\r"));
    EXPECT_EQ(Buffer().find(u'\n'), Text::npos);
}

TEST_F(OldNoise, IsGoneThroughOnceWithoutAnyLineEnd) {
    Hear(u"noise without an end ");
    for (std::size_t i = 0; i < Calls; ++i)
        ASSERT_FALSE(ExtractBlobs(u"[BLob]"));
    ASSERT_TRUE(ExtractBlobs(u"\r[BLob]\r[/BLob]\r"));
}

TEST_F(BlobFraming, TakesThousandsOfBlobsInsideOneAnother) {
    constexpr std::size_t Blobs = 10000;
    Text stream;
    for (std::size_t i = 0; i < Blobs; ++i)
        stream += u"[BLob]\r";
    for (std::size_t i = 0; i < Blobs; ++i)
        stream += u"[RESULT_UNIT \"ms\"]\r[/BLob]\r";
    EXPECT_TRUE(ExtractBlobs(stream));
    EXPECT_EQ(DeliverValues().size(), Blobs);
    EXPECT_EQ(Buffer(), u"");
}

} // namespace
} // namespace modBLob
