// SPDX-License-Identifier: MIT
// The product's framing and decoding against the literal ones, on generated input. QUORIN_CASES in the environment asks
// for more cases than these.
#include "tests/reference/blob_reference.h"

#include "blob/framing.h"
#include "tests/blob/blob_streams.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace modBLob {
namespace {

using blob_streams::Generator;
using reference::BlobReference;

std::uint32_t Cases(std::uint32_t byDefault) {
    const char* wanted = std::getenv("QUORIN_CASES");
    return wanted != nullptr ? static_cast<std::uint32_t>(std::strtoul(wanted, nullptr, 10)) : byDefault;
}

class AgainstTheLiteralForm : public testing::Test {
protected:
    void StartAnew() {
        Decoder = {};
        Framing = {};
        Literal = {};
    }

    void ExpectSameState() const {
        ASSERT_EQ(Framing.BlobBuffer, Literal.BlobBuffer);
        ASSERT_EQ(Decoder.ConnectedID, Literal.Decoder.ConnectedID);
        ASSERT_EQ(Decoder.ConnectSeen, Literal.Decoder.ConnectSeen);
        ASSERT_EQ(Decoder.BlobErrorCode, Literal.Decoder.BlobErrorCode);
        ASSERT_EQ(Decoder.BlobErrorText, Literal.Decoder.BlobErrorText);
        ASSERT_EQ(Decoder.SlotCount, Literal.Decoder.SlotCount);
        ASSERT_EQ(Decoder.SlotCursor, Literal.Decoder.SlotCursor);
        ASSERT_EQ(Decoder.SlotTypes, Literal.Decoder.SlotTypes);
        ASSERT_EQ(Decoder.SlotVars, Literal.Decoder.SlotVars);
        ASSERT_EQ(Decoder.SlotValues, Literal.Decoder.SlotValues);
    }

    void ExpectSameResult() const {
        ASSERT_EQ(Decoder.ResultTypes, Literal.Decoder.ResultTypes);
        ASSERT_EQ(Decoder.ResultVars, Literal.Decoder.ResultVars);
        ASSERT_EQ(Decoder.ResultValue, Literal.Decoder.ResultValue);
        ASSERT_EQ(Decoder.ResultUnit, Literal.Decoder.ResultUnit);
    }

    /// Delivers results on both sides, at most that many.
    void Deliver(std::size_t most) {
        bool more = true;
        for (std::size_t i = 0; i < most && more; ++i) {
            more = NextResult();
            ASSERT_EQ(more, reference::NextResult(Literal));
            ASSERT_NO_FATAL_FAILURE(ExpectSameResult());
        }
    }

    void Receive(const Text& piece) {
        const bool ready = ExtractBlobs(piece);
        ASSERT_EQ(ready, reference::ExtractBlobs(Literal, piece));
        ASSERT_NO_FATAL_FAILURE(ExpectSameState());
        Delivered += ready ? static_cast<std::uint32_t>(Decoder.SlotCount) - 1 : 0;
        if (ready || Random.OneIn(10))
            Deliver(Random.OneIn(10) ? 1 : 1000);
    }

    void ConnectBoth(const Text& identity) { Decoder.ConnectedID = Literal.Decoder.ConnectedID = identity; }

    Generator Random{1};
    BlobReference Literal;
    std::uint32_t Delivered = 0; ///< results of the calls that gave any
};

TEST_F(AgainstTheLiteralForm, FramesStreamsInPieces) {
    for (std::uint32_t i = 0; i < Cases(8000); ++i) {
        StartAnew();
        ConnectBoth(Random.OneIn(2) ? u"A1" : u"");
        const Text stream = Random.Stream();
        for (std::size_t start = 0, length = 0; start < stream.size(); start += length) {
            length = Random.OneIn(3) ? stream.size() - start : 1 + Random.Below(stream.size());
            Receive(stream.substr(start, length));
            ASSERT_FALSE(HasFatalFailure())
                << "case " << i << ", from " << start << " of " << testing::PrintToString(stream);
        }
    }
    EXPECT_GT(Delivered, 1000U) << "the streams hardly hold a BLob that is accepted";
}

TEST_F(AgainstTheLiteralForm, FramesEachSequenceOfSevenLines) {
    const Text lines[] = {u"[BLob]\r", u"[/BLob]\r", u"[RESULT_UNIT \"ms\"]\r", u"[/BLob extra]\r"};
    constexpr std::uint32_t Sequences = 1U << 14U; // two bits a line
    for (std::uint32_t sequence = 0; sequence < Sequences; ++sequence) {
        StartAnew();
        Text stream;
        for (std::uint32_t line = 0; line < 7; ++line)
            stream += lines[(sequence >> (2 * line)) % 4];
        Receive(stream);
        ASSERT_FALSE(HasFatalFailure()) << testing::PrintToString(stream);
    }
}

TEST_F(AgainstTheLiteralForm, DecodesSingleTexts) {
    for (std::uint32_t i = 0; i < Cases(15000); ++i) {
        StartAnew();
        ConnectBoth(Random.OneIn(3) ? u"" : u"A1");
        const Text blob = Random.BlobText();
        ASSERT_EQ(DecodeBlob(blob), reference::DecodeBlob(Literal, blob)) << testing::PrintToString(blob);
        ASSERT_NO_FATAL_FAILURE(ExpectSameState()) << testing::PrintToString(blob);
        ASSERT_NO_FATAL_FAILURE(Deliver(1000)) << testing::PrintToString(blob);
    }
}

TEST_F(AgainstTheLiteralForm, PutsVariablesIntoLists) {
    for (std::uint32_t i = 0; i < Cases(100000); ++i) {
        const Text before = Random.VariableList();
        const Text variable = Random.Variable();
        Text list = before;
        Text literal = before;
        SetDescriptiveVar(list, variable);
        reference::SetDescriptiveVar(literal, variable);
        ASSERT_EQ(list, literal) << testing::PrintToString(before) << " with " << testing::PrintToString(variable);
    }
}

TEST_F(AgainstTheLiteralForm, TakesValuesOutOfQuotes) {
    for (std::uint32_t i = 0; i < Cases(100000); ++i) {
        const Text line = Random.QuotedLine();
        ASSERT_EQ(QuotedValue(line), reference::QuotedValue(line)) << testing::PrintToString(line);
    }
}

} // namespace
} // namespace modBLob
