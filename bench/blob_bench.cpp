// SPDX-License-Identifier: MIT
// Framing and decoding of what instruments send, compared with simpler readers.
#include "bench/blob_readers.h"
#include "bench/inputs.h"
#include "bench/processes.h"
#include "bench/ratio.h"
#include "src/blob/decoding.h"
#include "src/blob/framing.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <valgrind/callgrind.h>

namespace bench {

namespace {

constexpr std::int64_t Blobs = 100000;
constexpr std::int64_t CountedBlobs = 10000; ///< while each instruction is counted
constexpr std::size_t ChunkSize = 64;
constexpr std::int64_t NoiseBytes = 10000000;

/// The product's side: passes the text to the framing and collects each result.
void HandOver(const Text& text, Found& found) {
    if (!modBLob::ExtractBlobs(text))
        return;
    while (modBLob::NextResult()) {
        const modBLob::DecoderState& result = modBLob::Decoder;
        ++found.Values;
        found.Characters += static_cast<std::int64_t>(result.ResultTypes.front().size() + result.ResultValue.size() +
                                                      result.ResultUnit.size());
    }
}

void Forget() {
    modBLob::Framing = {};
    modBLob::Decoder = {};
}

void MustBeSame(const Found& product, const Found& other) {
    MustAgree("results", product.Values, other.Values);
    MustAgree("characters of results", product.Characters, other.Characters);
}

double InOneBatch(const Text& text, const Found& expected) {
    Forget();
    Found found;
    const double taken = Seconds([&] { HandOver(text, found); });
    MustBeSame(found, expected);
    return taken;
}

double InChunks(const std::vector<Text>& chunks, const Found& expected) {
    Forget();
    Found found;
    const double taken = Seconds([&] {
        for (const Text& chunk : chunks)
            HandOver(chunk, found);
    });
    MustBeSame(found, expected);
    return taken;
}

using Reader = std::vector<Reading> (*)(std::string_view);

double ByReader(Reader reader, const std::string& stream, const Found& expected) {
    std::vector<Reading> readings;
    const double taken = Seconds([&] { readings = reader(stream); });
    MustBeSame(expected, FoundIn(readings));
    return taken;
}

/// A stream as the instrument sends it, and as the serial port delivers it.
struct Streams {
    explicit Streams(std::int64_t blobs)
        : Bytes(Stream(blobs)), Characters(modStringTools::FromBytes(Bytes)), Expected(FoundIn(SplitByHand(Bytes))) {
        MustAgree("BLobs", Expected.Values, blobs);
    }
    std::string Bytes;
    Text Characters;
    Found Expected;
};

Sides AgainstReader(Reader reader, bool withTenth) {
    const auto whole = std::make_shared<Streams>(Blobs);
    Sides sides = {[whole] { return InOneBatch(whole->Characters, whole->Expected); },
                   [whole, reader] { return ByReader(reader, whole->Bytes, whole->Expected); }};
    if (withTenth)
        sides.Tenth = [tenth = std::make_shared<Streams>(Blobs / 10)] {
            return InOneBatch(tenth->Characters, tenth->Expected);
        };
    sides.Note = [whole] { return std::to_string(whole->Bytes.size()) + " bytes"; };
    return sides;
}

Sides AgainstHand(const std::string&) {
    return AgainstReader(SplitByHand, true);
}

Sides AgainstSevenPatterns(const std::string&) {
    return AgainstReader(MatchInTurn, false);
}

Sides AgainstOnePattern(const std::string&) {
    return AgainstReader(MatchOnce, false);
}

/// Returns pieces of ChunkSize characters, one more where a CR would be separated from its LF: the product gets whole
/// lines, and a pair that is split between two BLobs would lose the second one.
std::vector<Text> Chunks(const Text& text) {
    std::vector<Text> chunks;
    for (std::size_t start = 0; start < text.size(); start += chunks.back().size()) {
        const std::size_t end = start + ChunkSize;
        const bool parts = end < text.size() && text[end] == u'\n';
        chunks.push_back(text.substr(start, ChunkSize + (parts ? 1 : 0)));
    }
    return chunks;
}

Sides Chunked(const std::string&) {
    const auto whole = std::make_shared<Streams>(Blobs);
    const auto tenth = std::make_shared<Streams>(Blobs / 10);
    return {[whole, chunks = Chunks(whole->Characters)] { return InChunks(chunks, whole->Expected); },
            [whole] { return InOneBatch(whole->Characters, whole->Expected); },
            [tenth, chunks = Chunks(tenth->Characters)] { return InChunks(chunks, tenth->Expected); }};
}

/// Measures one BLob after so much noise. The noise is in the buffer before and afterwards.
double BehindNoise(const std::string& noise, const std::string& blob) {
    Forget();
    modBLob::Decoder.ConnectedID = u"QI-0001";
    modBLob::ExtractBlobs(modStringTools::FromBytes(noise));
    const std::size_t before = modBLob::Framing.BlobBuffer.size();
    const Text text = modStringTools::FromBytes(blob);
    std::int64_t calls = 0;
    Found found;
    const double taken = SecondsOfOne([&] {
        HandOver(text, found);
        ++calls;
    });
    MustAgree("BLobs behind noise", found.Values, calls);
    MustAgree("characters of noise", static_cast<std::int64_t>(modBLob::Framing.BlobBuffer.size()),
              static_cast<std::int64_t>(before));
    return taken;
}

Sides Noisy(const std::string&) {
    Generator generator(Seed);
    const std::string blob = OneBlob(generator);
    const auto noise = std::make_shared<std::string>(Noise(NoiseBytes));
    const auto pass = [noise] { Keep(std::memchr(noise->data(), '[', noise->size())); };
    return {[noise, blob] { return BehindNoise(*noise, blob); }, [pass] { return SecondsOfOne(pass); },
            [tenth = Noise(NoiseBytes / 10), blob] { return BehindNoise(tenth, blob); }};
}

/// A BLob of so many variables, and so many results, each of which has all of them.
Text ManyOfBoth(std::int64_t count) {
    std::string text = "[BLob]\r[ORIGIN \"QI-0001\"]\r";
    for (std::int64_t i = 0; i < count; ++i)
        text += "[DESCRIPTIVE_VAR \"V" + std::to_string(i) + "x=1\"]\r";
    for (std::int64_t i = 0; i < count; ++i)
        text += "[RESULT_UNIT \"ms\"]\r";
    return modStringTools::FromBytes(text + "[/BLob]\r");
}

double HeldBySlots(const Text& blob, std::int64_t results) {
    Forget();
    modBLob::Decoder.ConnectedID = u"QI-0001";
    modBLob::DecodeBlob(blob);
    std::size_t held = 0;
    for (const modBLob::ResultSlot& slot : modBLob::Decoder.Slots)
        held += slot.Types.size() + slot.Vars.size() + slot.Value.size() + slot.Unit.size();
    std::int64_t delivered = 0;
    while (modBLob::NextResult())
        ++delivered;
    MustAgree("results of one BLob", delivered, results);
    return static_cast<double>(held);
}

Sides SharedVariables(const std::string&) {
    constexpr std::int64_t Count = 3000;
    const auto whole = std::make_shared<Text>(ManyOfBoth(Count));
    const auto tenth = std::make_shared<Text>(ManyOfBoth(Count / 10));
    return {[whole] { return HeldBySlots(*whole, Count); }, [whole] { return static_cast<double>(whole->size()); },
            [tenth] { return HeldBySlots(*tenth, Count / 10); }};
}

// --- Instructions: the program runs itself under callgrind, which counts the measured work alone

constexpr const char* CountMode = "--count";

int CountMyself(const char* side) {
    const Streams streams(CountedBlobs);
    Forget();
    Found found;
    if (std::strcmp(side, "product") == 0) {
        CALLGRIND_TOGGLE_COLLECT;
        HandOver(streams.Characters, found);
        CALLGRIND_TOGGLE_COLLECT;
    } else {
        CALLGRIND_TOGGLE_COLLECT;
        const std::vector<Reading> readings = SplitByHand(streams.Bytes);
        CALLGRIND_TOGGLE_COLLECT;
        found = FoundIn(readings);
    }
    MustBeSame(found, streams.Expected);
    return 0;
}

double InstructionsPerByte(const std::string& folder, const std::string& side) {
    const std::string file = folder + "/instructions-" + side;
    SecondsOf({"valgrind", "-q", "--tool=callgrind", "--collect-atstart=no", "--callgrind-out-file=" + file,
               Beside("bench_blob"), CountMode, side});
    std::ifstream in(file);
    std::string line;
    while (std::getline(in, line))
        if (line.rfind("totals: ", 0) == 0)
            return std::stod(line.substr(8)) / static_cast<double>(Stream(CountedBlobs).size());
    Fail("no count of instructions in " + file);
}

Sides Instructions(const std::string& folder) {
    return {[folder] { return InstructionsPerByte(folder, "product"); },
            [folder] { return InstructionsPerByte(folder, "splitter"); }};
}

} // namespace

} // namespace bench

int main(int count, char** words) {
    using namespace bench;
    if (count == 3 && std::strcmp(words[1], CountMode) == 0)
        return CountMyself(words[2]);
    constexpr const char* Batch = "10^5 BLobs in one batch: framing, decoding, NextResult";
    return Main(count, words,
                {{Batch, "hand-written splitter without the dialect", {5}, AgainstHand},
                 {Batch, "RE2, seven patterns tried in turn", {0.15}, AgainstSevenPatterns},
                 {Batch, "RE2, one general pattern a line", {0.7}, AgainstOnePattern},
                 {"10^5 BLobs in chunks of 64 bytes", "the one batch", {2}, Chunked},
                 {"one BLob behind 10 MB of noise in the buffer", "one memchr pass over 10 MB", {3}, Noisy},
                 {"what one BLob of 3,000 variables and 3,000 results holds until it is delivered",
                  "its own text",
                  {2, false, Figure::Ratio, "characters"},
                  SharedVariables},
                 {"instructions per byte of the decode, by callgrind",
                  "the splitter's",
                  {40, false, Figure::Product, "instructions/byte"},
                  Instructions}});
}
