// SPDX-License-Identifier: MIT
#include "blob/decoding.h"

#include "blob/tags.h"
#include "text/patterns.h"
#include "text/ranges.h"

#include <algorithm>

namespace modBLob {

namespace {

constexpr char16_t Bar = u'|';
constexpr std::int16_t OriginMismatch = 1;
constexpr std::int16_t NoConnection = 2;

/// What the lines of a BLob have said so far. A result that is stored clears none of it: what the next one does not say
/// anew it takes over.
struct LinesSoFar {
    Text Vars;
    Text Types;
    Text Value;
};

/// A BLob that names no origin is accepted, connected or not.
bool OriginAccepted(TextView text) {
    if (!HasTag(text, OriginTag) || QuotedValue(InsideLastTag(text, OriginTag)) == Decoder.ConnectedID)
        return true;
    if (Decoder.ConnectedID.empty())
        SetBlobError(NoConnection, u"BLob received without connect");
    else
        SetBlobError(OriginMismatch, u"Origin doesn't match connected ID");
    return false;
}

void StoreResult(const LinesSoFar& soFar, const Text& unit) {
    const auto slot = static_cast<std::size_t>(Decoder.SlotCount - 1);
    const Text number = modStringTools::NumberText(Decoder.SlotCount) + Bar;
    Decoder.SlotVars[slot] = number + soFar.Vars;
    Decoder.SlotTypes[slot] = number + soFar.Types;
    Decoder.SlotValues[slot] = number + soFar.Value + Bar + unit;
    AddResultSlot();
}

void ReadLine(TextView line, LinesSoFar& soFar) {
    if (BeginsWithTag(line, DescriptiveVarTag)) {
        const Text variable = QuotedValue(line);
        if (soFar.Vars.empty())
            soFar.Vars = variable;
        else
            SetDescriptiveVar(soFar.Vars, variable);
    } else if (BeginsWithTag(line, ResultTypeTag)) {
        soFar.Types = QuotedValue(line);
        modStringTools::ReplacePattern(soFar.Types, u"\" \"", u"|", true, false);
    } else if (BeginsWithTag(line, ResultValueTag)) {
        soFar.Value = QuotedValue(line);
    } else if (BeginsWithTag(line, ResultUnitTag)) {
        StoreResult(soFar, QuotedValue(line));
    }
}

/// A text without any line end has no lines; otherwise what stands behind the last one is a line too.
void ReadLines(TextView text, LinesSoFar& soFar) {
    if (text.find(LineEnd) == TextView::npos)
        return;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(LineEnd), text.size());
        ReadLine(text.substr(0, end), soFar);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

/// A slot's text behind its number and the bar that ends the number.
TextView WithoutNumber(const Text& slot) {
    return TextView(slot).substr(slot.find(Bar) + 1);
}

/// Cuts off what stands in front of the first bar, and the bar; all of it where there is none.
Text TakeItem(TextView& list) {
    const std::size_t end = std::min(list.find(Bar), list.size());
    Text item(list.substr(0, end));
    list.remove_prefix(std::min(end + 1, list.size()));
    return item;
}

/// The items of a list that bars part: one more than there are bars, so an empty list is one empty item.
std::vector<Text> SplitList(TextView list) {
    const auto bars = std::count(list.begin(), list.end(), Bar);
    std::vector<Text> items(static_cast<std::size_t>(bars) + 1);
    for (Text& item : items)
        item = TakeItem(list);
    return items;
}

} // namespace

bool DecodeBlob(TextView blob) {
    if (!BeginsWithTag(blob, StartTag) || !HasTag(blob, ExactEndLine))
        return false;
    Decoder.ConnectSeen = HasTag(blob, ConnectTag);
    if (Decoder.ConnectSeen) {
        // All but the inside of the tag is dropped, which leaves no lines: a connecting BLob carries nothing else.
        blob = InsideLastTag(blob, ConnectTag);
        Decoder.ConnectedID = QuotedValue(blob);
    }
    if (!OriginAccepted(blob))
        return false;
    AddResultSlot();
    LinesSoFar soFar;
    soFar.Vars = u"ORIGIN=" + Decoder.ConnectedID;
    ReadLines(blob, soFar);
    return true;
}

bool NextResult() {
    do {
        ++Decoder.SlotCursor;
        if (Decoder.SlotCursor > Decoder.SlotCount) {
            Decoder.SlotCount = 0;
            Decoder.SlotCursor = 0;
            return false;
        }
    } while (Decoder.SlotTypes[static_cast<std::size_t>(Decoder.SlotCursor - 1)].empty());

    const auto slot = static_cast<std::size_t>(Decoder.SlotCursor - 1);
    Decoder.ResultTypes = SplitList(WithoutNumber(Decoder.SlotTypes[slot]));
    Decoder.ResultVars = SplitList(WithoutNumber(Decoder.SlotVars[slot]));
    // A value with a bar in it pushes the unit out: "1|a|b|ms" is the value "a" with the unit "b".
    TextView valueAndUnit = WithoutNumber(Decoder.SlotValues[slot]);
    Decoder.ResultValue = TakeItem(valueAndUnit);
    Decoder.ResultUnit = TakeItem(valueAndUnit);
    return true;
}

void AddResultSlot() {
    if (Decoder.SlotCount > 0 && Decoder.SlotTypes[static_cast<std::size_t>(Decoder.SlotCount - 1)].empty())
        return;
    ++Decoder.SlotCount;
    if (Decoder.SlotCount == 1) {
        Decoder.SlotTypes.clear();
        Decoder.SlotVars.clear();
        Decoder.SlotValues.clear();
        Decoder.SlotCursor = 0;
    }
    const auto count = static_cast<std::size_t>(Decoder.SlotCount);
    Decoder.SlotTypes.resize(count);
    Decoder.SlotVars.resize(count);
    Decoder.SlotValues.resize(count);
}

// Records that were downloaded depend on what the matcher makes of this, odd as it is: the old variable is taken to end
// at the list's last bar and not at the next one, so "ORIGIN=X|A=1|B=2|C=3" becomes "ORIGIN=X|A=9|C=3" with "A=9"; and
// an old value of one character at the list's end stays: "ORIGIN=X|B=2" becomes "ORIGIN=X|B=52" with "B=5".
void SetDescriptiveVar(Text& list, const Text& variable) {
    Text name = variable;
    modStringTools::ReplacePattern(name, u"=.+$", u"", false, false);

    std::int32_t first = 0;
    std::int32_t last = 0;
    modStringTools::FindPattern(1, list, name + u"=", first, last, false);
    if (first == 0) {
        list += Bar + variable;
        return;
    }
    std::int32_t valueFirst = 0;
    modStringTools::FindPattern(first, list, u"=.+|", valueFirst, last, false);
    last = last != 0 ? last - 1 : static_cast<std::int32_t>(list.size());
    modStringTools::ReplaceRange(list, variable, first, last);
}

Text QuotedValue(TextView line) {
    const std::size_t first = line.find(u'"');
    const std::size_t last = line.rfind(u'"');
    if (first == TextView::npos || last == first)
        return {};
    return Text(line.substr(first + 1, last - first - 1));
}

void SetBlobError(std::int16_t code, const Text& text) {
    Decoder.BlobErrorCode = code;
    Decoder.BlobErrorText = text;
}

} // namespace modBLob
