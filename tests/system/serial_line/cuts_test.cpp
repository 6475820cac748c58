// SPDX-License-Identifier: MIT
// The same records, cut into deliveries at every place, give the same results.
#include "tests/reference/agreement.h"
#include "tests/system/serial_line/collection.h"
#include "tests/system/serial_line/records.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <vector>

namespace line {
namespace {

/// Characters of one to four bytes, in UTF-8 and Windows-1252, lines with other ends, noise.
const std::string Stream = "hum\r\n" + Hello +
                           Result("Moisture\" \"M2", "23.4", "\xC2\xB5g/m\xE2\x82\xAC",
                                  "[DESCRIPTIVE_VAR \"Site=N\xC3\xB6rd\n\xF0\x9F\x98\x80 a=b\"]\r\n") +
                           "battery 80%\nlow\r\n" +
                           Result("Temperature", "19,5",
                                  "\xB0"
                                  "C\xE9");

struct Outcome {
    std::string Values;
    std::string File;
    bool operator==(const Outcome& other) const { return Values == other.Values && File == other.File; }
};

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    return out << outcome.Values << "-- saved:\n" << outcome.File;
}

struct Delivery {
    std::string Bytes;
    int Ticks; ///< after the delivery
};

Outcome OutcomeOf(const std::vector<Delivery>& deliveries) {
    Collection collection;
    for (const Delivery& delivery : deliveries) {
        collection.Deliver(delivery.Bytes);
        collection.Tick(delivery.Ticks);
    }
    Outcome outcome;
    outcome.Values = collection.Values();
    outcome.File = collection.Saved();
    return outcome;
}

constexpr int UntilDecoded = 4; // ticks

/// Returns the distance between two cuts: 1, or more in a run of fewer cases.
std::size_t Step() {
    return std::max<std::size_t>(Stream.size() / std::max<std::size_t>(reference::CasesOf(Stream.size()), 1), 1);
}

Outcome Uncut(const std::string& stream) {
    return OutcomeOf({{stream, UntilDecoded}});
}

Outcome Cut(const std::string& stream, std::size_t place, int ticks) {
    return OutcomeOf({{stream.substr(0, place), ticks}, {stream.substr(place), UntilDecoded}});
}

TEST(Records, ThatComeInOnePieceAreAsTheInstrumentSentThem) {
    EXPECT_EQ(Uncut(Stream), (Outcome{"23.4 \xC2\xB5g/m\xE2\x82\xAC\n19,5 \xC2\xB0"
                                      "C\xC3\xA9\nN\xC3\xB6rd\n\xF0\x9F\x98\x80 a=b\nQI-7\n",
                                      "Moisture|Temperature|Site|Meter\n23.4 \xC2\xB5g/m\xE2\x82\xAC|19,5 \xC2\xB0"
                                      "C\xC3\xA9|N\xC3\xB6rd \xF0\x9F\x98\x80 a=b|QI-7\n"}));
}

class CutRecords : public testing::TestWithParam<int> {};

TEST_P(CutRecords, GiveTheSameWhereverTheyAreCut) {
    const Outcome uncut = Uncut(Stream);
    for (std::size_t place = 0; place <= Stream.size(); place += Step())
        ASSERT_EQ(Cut(Stream, place, GetParam()), uncut) << "cut behind byte " << place;
}

INSTANTIATE_TEST_SUITE_P(TicksBetween, CutRecords, testing::Values(0, 1, 3));

TEST(CutRecordsIn, ThreePiecesGiveTheSame) {
    const Outcome uncut = Uncut(Stream);
    const std::uint64_t first = reference::Setting("QUORIN_SEED", 1);
    const std::uint64_t cases = reference::CasesOf(300);
    const auto length = static_cast<std::uint32_t>(Stream.size());
    for (std::uint64_t seed = first; seed < first + cases; ++seed) {
        reference::Choices choices(seed);
        const std::size_t one = choices.Below(length + 1);
        const std::size_t two = one + choices.Below(static_cast<std::uint32_t>(length - one + 1));
        const int ticks = static_cast<int>(choices.Below(4));
        const int moreTicks = static_cast<int>(choices.Below(4));
        ASSERT_EQ(OutcomeOf({{Stream.substr(0, one), ticks},
                             {Stream.substr(one, two - one), moreTicks},
                             {Stream.substr(two), UntilDecoded}}),
                  uncut)
            << "QUORIN_SEED=" << seed << ", cut behind bytes " << one << " (" << ticks << " ticks) and " << two << " ("
            << moreTicks << " ticks)";
    }
}

TEST(CutRecordsIn, SingleBytesWithATickBehindEachGiveTheSame) {
    std::vector<Delivery> bytes;
    for (const char byte : Stream)
        bytes.push_back({std::string(1, byte), 1});
    bytes.back().Ticks = UntilDecoded;
    EXPECT_EQ(OutcomeOf(bytes), Uncut(Stream));
}

/// Returns true if the bytes before the place end inside a character. Such bytes are lost with the line.
bool InsideACharacter(std::size_t place) {
    backends::SerialText decoder;
    decoder.Decode(Stream.substr(0, place));
    return decoder.Pending() > 0;
}

TEST(CutRecordsIn, TwoByALineThatIsPulledOutAndComesBackGiveTheSame) {
    const Outcome uncut = Uncut(Stream);
    for (std::size_t place = 0; place <= Stream.size(); place += Step()) {
        if (InsideACharacter(place))
            continue;
        Collection collection;
        collection.Deliver(Stream.substr(0, place));
        collection.PullOut();
        collection.Tick();
        collection.PlugIn();
        collection.Tick(2); // the first may decode and not look at the port
        collection.Deliver(Stream.substr(place));
        collection.Tick(UntilDecoded);
        Outcome outcome;
        outcome.Values = collection.Values();
        outcome.File = collection.Saved();
        ASSERT_EQ(outcome, uncut) << "pulled out behind byte " << place;
    }
}

// --- where a cut makes a difference ----------------------------------------------------------------------------------

/// Returns the places at which a cut with a tick after it changes the result.
std::vector<std::size_t> PlacesThatMatter(const std::string& stream) {
    const Outcome uncut = Uncut(stream);
    std::vector<std::size_t> places;
    for (std::size_t place = 0; place <= stream.size(); ++place) {
        if (!(Cut(stream, place, 1) == uncut))
            places.push_back(place);
    }
    return places;
}

std::vector<std::size_t> From(std::size_t first, std::size_t last) {
    std::vector<std::size_t> places;
    for (std::size_t place = first; place <= last; ++place)
        places.push_back(place);
    return places;
}

const std::string Moisture = Result("Moisture", "23.4", "%");
const std::string Temperature = Result("Temperature", "19", "K");

// A record is decoded if its end tag is the last complete line that has come. A complete line that follows at once
// delays it until the next record; an incomplete line does not.
TEST(CutMatters, BehindARecordThatALineFollowsAtOnce) {
    const std::string line = "battery 80%\r\n";
    const std::string stream = Hello + Moisture + line;
    const std::size_t end = stream.size() - line.size();
    EXPECT_EQ(Uncut(stream).Values, "\n\n\n\n");
    EXPECT_EQ(Cut(stream, end, 1).Values, "23.4 %\n\n\nQI-7\n");
    EXPECT_EQ(PlacesThatMatter(stream), From(end, stream.size() - 1));
    EXPECT_EQ(PlacesThatMatter(stream + Temperature), std::vector<std::size_t>{}) << "the next record brings all";
}

// The results of a batch in which a record is refused wait for the next batch in which none is.
TEST(CutMatters, BetweenARefusedRecordAndAGoodOne) {
    const std::string refused = "[BLob]\r\n[ORIGIN \"QI-8\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";
    const std::string stream = Hello + refused + Moisture;
    const std::size_t end = Hello.size() + refused.size();
    EXPECT_EQ(Uncut(stream).Values, "\n\n\n\n");
    EXPECT_EQ(PlacesThatMatter(stream), From(end, end + std::string("[BLob]\r").size()))
        << "up to the end of the next line, which would be part of the batch";
}

// Line ends are converted in all the text that waits. If a batch begins with a line feed, that joins the end of the
// noise before it to one line end. Without a cut it is the first character of the start tag's line, which then is no
// start tag.
TEST(CutMatters, InFrontOfALineFeedThatFollowsARecord) {
    const std::string head = "hum\r\n" + Hello;
    const std::string stream = head + "\n" + Moisture;
    EXPECT_EQ(Uncut(stream).Values, "\n\n\n\n");
    EXPECT_EQ(Cut(stream, head.size(), 1).Values, "23.4 %\n\n\nQI-7\n");
    EXPECT_EQ(PlacesThatMatter(stream), From(head.size(), head.size() + std::string("\n[BLob]\r").size()));
}

} // namespace
} // namespace line
