// SPDX-License-Identifier: MIT
#include "tests/reference/blob_comparison.h"

#include "src/blob/decoding.h"
#include "src/blob/framing.h"
#include "tests/reference/blob_cases.h"
#include "tests/reference/blob_reference.h"

namespace reference {

namespace {

using modBLob::Decoder;

std::string Shown(const Text& text) {
    std::string shown = "\"";
    for (const char byte : modStringTools::ToBytes(text)) {
        if (byte == '\r' || byte == '\n')
            shown += byte == '\r' ? "\\r" : "\\n";
        else
            shown += byte;
    }
    return shown + "\"";
}

std::string Shown(const std::vector<Text>& texts) {
    std::string shown;
    for (const Text& text : texts)
        shown += Shown(text) + " ";
    return shown;
}

std::string Shown(std::int64_t number) {
    return std::to_string(number);
}

/// Both forms, each with its state, and a record of the steps.
class BothForms {
public:
    BothForms() {
        Decoder = {};
        modBLob::Framing = {};
    }

    void Connect(const Text& identity) {
        Decoder.ConnectedID = Literal_.Decoder.ConnectedID = identity;
        Done_ = "connected to " + Shown(identity);
    }

    void Receive(const Text& piece) {
        Done_ += ", " + Shown(piece);
        Given_ += piece.size();
        CompareOne("result", modBLob::ExtractBlobs(piece), ExtractBlobs(Literal_, piece));
        CompareOne("BlobBuffer", modBLob::Framing.BlobBuffer, Literal_.BlobBuffer);
        CompareSlots();
    }

    void Decode(const Text& blob) {
        Done_ += ", " + Shown(blob);
        Given_ += blob.size();
        CompareOne("result", modBLob::DecodeBlob(blob), DecodeBlob(Literal_, blob));
        CompareSlots();
    }

    /// Delivers results, at most `most`.
    void Deliver(std::uint32_t most) {
        bool more = true;
        for (std::uint32_t i = 0; i < most && more && Differences_.empty(); ++i) {
            Done_ += ", next result";
            more = modBLob::NextResult();
            CompareOne("result", more, NextResult(Literal_));
            CompareSlots();
            CompareOne("ResultTypes", Decoder.ResultTypes, Literal_.Decoder.ResultTypes);
            CompareOne("ResultVars", Decoder.ResultVars, Literal_.Decoder.ResultVars);
            CompareOne("ResultValue", Decoder.ResultValue, Literal_.Decoder.ResultValue);
            CompareOne("ResultUnit", Decoder.ResultUnit, Literal_.Decoder.ResultUnit);
        }
    }

    bool Agree() const { return Differences_.empty(); }
    std::string Difference() const { return Agree() ? "" : Done_ + ":" + Differences_; }

private:
    template <typename Value>
    void CompareOne(const char* what, const Value& product, const Value& literal) {
        if (product != literal)
            Differences_ += std::string("\n  ") + what + " " + Shown(product) + " instead of " + Shown(literal);
    }

    void CompareSlots() {
        LookAtMemory();
        const LiteralDecoder& literal = Literal_.Decoder;
        const modBLob::SlotTexts slots = modBLob::TextsOfSlots(modBLob::Decoder);
        CompareOne("ConnectedID", Decoder.ConnectedID, literal.ConnectedID);
        CompareOne("ConnectSeen", Decoder.ConnectSeen, literal.ConnectSeen);
        CompareOne("BlobErrorCode", static_cast<int>(Decoder.BlobErrorCode), static_cast<int>(literal.BlobErrorCode));
        CompareOne("BlobErrorText", Decoder.BlobErrorText, literal.BlobErrorText);
        CompareOne("SlotCount", Decoder.SlotCount, literal.SlotCount);
        CompareOne("SlotCursor", Decoder.SlotCursor, literal.SlotCursor);
        CompareOne("SlotTypes", slots.Types, literal.SlotTypes);
        CompareOne("SlotVars", slots.Vars, literal.SlotVars);
        CompareOne("SlotValues", slots.Values, literal.SlotValues);
    }

    /// Checks that the memory of the undelivered results grows linearly with the text, not with its square.
    void LookAtMemory() {
        constexpr std::size_t EachSlot = 64; // characters, the instrument's name among them
        std::size_t held = 0;
        for (const modBLob::ResultSlot& slot : Decoder.Slots)
            held += slot.Types.size() + slot.Vars.size() + slot.Value.size() + slot.Unit.size();
        if (held > 4 * Given_ + EachSlot * Decoder.Slots.size())
            Differences_ += "\n  the slots hold " + std::to_string(held) + " characters of " + std::to_string(Given_);
    }

    std::size_t Given_ = 0; ///< characters
    BlobReference Literal_;
    std::string Done_;
    std::string Differences_;
};

constexpr std::uint32_t All = 1000;

} // namespace

std::string CompareFraming(Choices& choices) {
    BlobCases cases(choices);
    BothForms forms;
    forms.Connect(choices.OneIn(2) ? u"A1" : u"");
    const Text stream = choices.OneIn(50) ? cases.Stream() : cases.ShortStream();
    for (std::size_t start = 0, length = 0; start < stream.size() && forms.Agree(); start += length) {
        const auto left = static_cast<std::uint32_t>(stream.size() - start);
        length = choices.OneIn(3) ? left : 1 + choices.Below(left);
        forms.Receive(stream.substr(start, length));
        if (choices.OneIn(3))
            forms.Deliver(choices.OneIn(4) ? 1 : All);
    }
    return forms.Difference();
}

std::string CompareDecoding(Choices& choices) {
    BlobCases cases(choices);
    BothForms forms;
    forms.Connect(choices.OneIn(3) ? u"" : u"A1");
    do
        forms.Decode(cases.BlobText());
    while (forms.Agree() && choices.OneIn(4));
    forms.Deliver(All);
    return forms.Difference();
}

std::string CompareVariables(Choices& choices) {
    BlobCases cases(choices);
    const Text before = cases.VariableList();
    const Text variable = cases.Variable();
    Text product = before;
    Text literal = before;
    modBLob::SetDescriptiveVar(product, variable);
    SetDescriptiveVar(literal, variable);
    if (product == literal)
        return {};
    return Shown(variable) + " in " + Shown(before) + ": " + Shown(product) + " instead of " + Shown(literal);
}

std::string CompareQuotedValues(Choices& choices) {
    const Text line = BlobCases(choices).QuotedLine();
    const Text product = modBLob::QuotedValue(line);
    const Text literal = QuotedValue(line);
    return product == literal ? "" : Shown(line) + ": " + Shown(product) + " instead of " + Shown(literal);
}

} // namespace reference
