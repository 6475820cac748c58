// SPDX-License-Identifier: MIT
#include "tests/reference/blob_reference.h"

#include "tests/reference/patterns_reference.h"
#include "tests/reference/ranges_reference.h"

namespace reference {

namespace {

constexpr std::int32_t NothingHandled = 99;
constexpr std::int32_t AllDecoded = -1;
constexpr std::int32_t OneFailed = 0;

bool Has(const Text& text, const Text& pattern) {
    return HasPattern(text, pattern, false, false);
}

/// Entry n of a 1-based list.
Text& Entry(std::vector<Text>& list, std::int32_t n) {
    return list.at(static_cast<std::size_t>(n - 1));
}

void NormaliseLineEnds(Text& buffer) {
    if (Has(buffer, u"\r\n"))
        ReplacePattern(buffer, u"\r\n", u"\r", true, false);
    else
        ReplacePattern(buffer, u"\n", u"\r", true, false);
}

void Split(Text list, std::vector<Text>& items) {
    ReplacePattern(list, u"\\d+|", u"", false, false);
    list += u"|";
    Text item;
    const std::int32_t count = GetToken(list, u"|", 0, item);
    items.assign(static_cast<std::size_t>(count), Text());
    for (std::int32_t i = 1; i <= count; ++i)
        GetToken(list, u"|", i, Entry(items, i));
}

bool OriginAccepted(BlobReference& state, Text copy) {
    if (!Has(copy, u"[ORIGIN"))
        return true;
    ReplacePattern(copy, u"^.+[ORIGIN", u"", false, false);
    ReplacePattern(copy, u"].+$", u"", false, false);
    if (QuotedValue(copy) == state.Decoder.ConnectedID)
        return true;
    if (!state.Decoder.ConnectedID.empty())
        SetBlobError(state, 1, u"Origin doesn't match connected ID");
    else
        SetBlobError(state, 2, u"BLob received without connect");
    return false;
}

} // namespace

bool ExtractBlobs(BlobReference& state, const Text& received) {
    Text& buffer = state.BlobBuffer;
    buffer += received;
    NormaliseLineEnds(buffer);
    std::int32_t index = 1;
    std::int32_t linePos = 0;
    std::int32_t blobStart = 0;
    std::int32_t outcome = NothingHandled;
    for (;;) {
        Text line;
        const std::int32_t lines = GetToken(buffer, u"\r", index, line);
        if (Has(line, u"^[BLob"))
            blobStart = linePos + 1;
        std::int32_t first = 0;
        std::int32_t last = 0;
        linePos = FindPattern(linePos + 1, buffer, u"\r", first, last, false);
        if (linePos == 0)
            break;
        if (Has(line, u"^[/BLob") && blobStart != 0) {
            if (outcome == NothingHandled)
                outcome = AllDecoded;
            if (!DecodeBlob(state, TextRange(buffer, blobStart, linePos)))
                outcome = OneFailed;
            RemoveRange(buffer, blobStart, linePos);
            blobStart = 0;
            linePos = 0;
            index = 0;
        }
        ++index;
        if (index > lines)
            break;
    }
    return outcome == AllDecoded;
}

bool DecodeBlob(BlobReference& state, Text blob) {
    if (!Has(blob, u"^[BLob") || !Has(blob, u"[/BLob]\r"))
        return false;
    LiteralDecoder& decoder = state.Decoder;
    decoder.ConnectSeen = Has(blob, u"[CONNECT");
    if (decoder.ConnectSeen) {
        ReplacePattern(blob, u"^.+[CONNECT", u"", false, false);
        ReplacePattern(blob, u"].+$", u"", false, false);
        decoder.ConnectedID = QuotedValue(blob);
    }
    if (!OriginAccepted(state, blob))
        return false;
    AddResultSlot(state);
    Text vars = u"ORIGIN=" + decoder.ConnectedID;
    Text types;
    Text value;
    for (std::int32_t index = 1;; ++index) {
        Text line;
        const std::int32_t lines = GetToken(blob, u"\r", index, line);
        if (Has(line, u"^[DESCRIPTIVE_VAR")) {
            if (!vars.empty())
                SetDescriptiveVar(vars, QuotedValue(line));
            else
                vars = QuotedValue(line);
        } else if (Has(line, u"^[RESULT_TYPE")) {
            types = QuotedValue(line);
            ReplacePattern(types, u"\" \"", u"|", true, false);
        } else if (Has(line, u"^[RESULT_VALUE")) {
            value = QuotedValue(line);
        } else if (Has(line, u"^[RESULT_UNIT")) {
            const std::int32_t n = decoder.SlotCount;
            const Text number = modStringTools::NumberText(n);
            Entry(decoder.SlotVars, n) = number + u"|" + vars;
            Entry(decoder.SlotTypes, n) = number + u"|" + types;
            Entry(decoder.SlotValues, n) = number + u"|" + value + u"|" + QuotedValue(line);
            AddResultSlot(state);
        }
        if (index + 1 > lines)
            return true;
    }
}

bool NextResult(BlobReference& state) {
    LiteralDecoder& decoder = state.Decoder;
    for (;;) {
        ++decoder.SlotCursor;
        if (decoder.SlotCursor > decoder.SlotCount) {
            decoder.SlotCursor = 0;
            decoder.SlotCount = 0;
            return false;
        }
        if (!Entry(decoder.SlotTypes, decoder.SlotCursor).empty())
            break;
    }
    Split(Entry(decoder.SlotTypes, decoder.SlotCursor), decoder.ResultTypes);
    Split(Entry(decoder.SlotVars, decoder.SlotCursor), decoder.ResultVars);
    Text values = Entry(decoder.SlotValues, decoder.SlotCursor);
    ReplacePattern(values, u"\\d+|", u"", false, false);
    GetToken(values, u"|", 1, decoder.ResultValue);
    GetToken(values, u"|", 2, decoder.ResultUnit);
    return true;
}

void AddResultSlot(BlobReference& state) {
    LiteralDecoder& decoder = state.Decoder;
    if (decoder.SlotCount > 0 && Entry(decoder.SlotTypes, decoder.SlotCount).empty())
        return;
    ++decoder.SlotCount;
    if (decoder.SlotCount == 1) {
        decoder.SlotTypes.assign(1, Text());
        decoder.SlotVars.assign(1, Text());
        decoder.SlotValues.assign(1, Text());
        decoder.SlotCursor = 0;
    } else {
        decoder.SlotTypes.push_back(Text());
        decoder.SlotVars.push_back(Text());
        decoder.SlotValues.push_back(Text());
    }
}

void SetDescriptiveVar(Text& list, const Text& variable) {
    Text name = variable;
    ReplacePattern(name, u"=.+$", u"", false, false);
    std::int32_t first = 0;
    std::int32_t last = 0;
    if (FindPattern(1, list, name + u"=", first, last, false) == 0) {
        list += u"|" + variable;
        return;
    }
    std::int32_t valueFirst = 0;
    std::int32_t valueLast = 0;
    FindPattern(first, list, u"=.+|", valueFirst, valueLast, false);
    valueLast = valueLast != 0 ? valueLast - 1 : static_cast<std::int32_t>(list.size());
    ReplaceRange(list, variable, first, valueLast);
}

Text QuotedValue(const Text& text) {
    std::int32_t first = 0;
    std::int32_t last = 0;
    FindPattern(1, text, u"\".+\"", first, last, false);
    if (last <= first || last == first + 1)
        return {};
    return TextRange(text, first + 1, last - 1);
}

void SetBlobError(BlobReference& state, std::int16_t code, const Text& text) {
    state.Decoder.BlobErrorCode = modBLob::BlobError{code};
    state.Decoder.BlobErrorText = text;
}

} // namespace reference
