// SPDX-License-Identifier: MIT
#include "blob/decoding.h"

#include "blob/tags.h"
#include "text/patterns.h"
#include "text/ranges.h"

#include <algorithm>

namespace modBLob {

using modStringTools::FindChar;
using modStringTools::SameIgnoringCase;

namespace {

constexpr char16_t Bar = u'|';
constexpr char16_t Equals = u'=';
constexpr char16_t Quote = u'"';
constexpr std::int16_t OriginMismatch = 1;
constexpr std::int16_t NoConnection = 2;

std::int32_t Length(TextView text) {
    return static_cast<std::int32_t>(text.size());
}

/// It may stand anywhere in the text, but is nearly always what the text ends with.
bool HasExactEndLine(TextView blob) {
    const TextView end = blob.substr(blob.size() - std::min(blob.size(), ExactEndLine.size()));
    return BeginsWithTag(end, ExactEndLine) || HasTag(blob, ExactEndLine);
}

/// What stands between the first and the last double quote of a line.
TextView InsideQuotes(TextView line) {
    const std::size_t first = FindChar(line, Quote);
    if (first == TextView::npos)
        return {};
    const std::size_t last = line.rfind(Quote);
    return last == first ? TextView() : line.substr(first + 1, last - first - 1);
}

/// What the lines of a BLob have said so far, besides Decoder.Variables. A result that is stored clears none of it:
/// what the next one does not say anew it takes over.
struct LinesSoFar {
    TextView Types; ///< parted by `" "`
    TextView Value;
};

/// A BLob that names no origin is accepted, connected or not.
bool OriginAccepted(TextView text, std::size_t lastOrigin) {
    if (lastOrigin == TextView::npos || InsideQuotes(InsideTag(text, lastOrigin, OriginTag)) == Decoder.ConnectedID)
        return true;
    if (Decoder.ConnectedID.empty())
        SetBlobError(NoConnection, u"BLob received without connect");
    else
        SetBlobError(OriginMismatch, u"Origin doesn't match connected ID");
    return false;
}

void AppendTypes(Text& list, TextView types) {
    constexpr TextView Parting = u"\" \"";
    std::size_t taken = 0;
    for (std::size_t quote = FindChar(types, Quote); quote != TextView::npos; quote = FindChar(types, Quote, quote)) {
        if (types.substr(quote, Parting.size()) == Parting) {
            list.append(types, taken, quote - taken) += Bar;
            quote += Parting.size();
            taken = quote;
        } else {
            ++quote;
        }
    }
    list.append(types, taken);
}

/// A slot's text with its number, and room for so many characters more.
Text& NumberSlot(Text& slot, const Text& number, std::size_t room) {
    slot.reserve(number.size() + room);
    return slot = number;
}

void StoreResult(const LinesSoFar& soFar, TextView unit) {
    const auto slot = static_cast<std::size_t>(Decoder.SlotCount - 1);
    const Text number = modStringTools::NumberText(Decoder.SlotCount) + Bar;
    NumberSlot(Decoder.SlotVars[slot], number, Decoder.Variables.size()) += Decoder.Variables;
    AppendTypes(NumberSlot(Decoder.SlotTypes[slot], number, soFar.Types.size()), soFar.Types);
    Text& values = NumberSlot(Decoder.SlotValues[slot], number, soFar.Value.size() + 1 + unit.size());
    values.append(soFar.Value).append(1, Bar).append(unit);
    AddResultSlot();
}

void ReadLine(TextView line, LinesSoFar& soFar) {
    if (BeginsWithTag(line, DescriptiveVarTag)) {
        if (Decoder.Variables.empty())
            Decoder.Variables = InsideQuotes(line);
        else
            SetDescriptiveVar(Decoder.Variables, InsideQuotes(line));
    } else if (BeginsWithTag(line, ResultTypeTag)) {
        soFar.Types = InsideQuotes(line);
    } else if (BeginsWithTag(line, ResultValueTag)) {
        soFar.Value = InsideQuotes(line);
    } else if (BeginsWithTag(line, ResultUnitTag)) {
        StoreResult(soFar, InsideQuotes(line));
    }
}

/// A text without any line end has no lines; otherwise what stands behind the last one is a line too.
void ReadLines(TextView text) {
    std::size_t end = FindChar(text, LineEnd);
    if (end == TextView::npos)
        return;
    LinesSoFar soFar;
    for (;;) {
        ReadLine(text.substr(0, end), soFar);
        if (end == TextView::npos)
            return;
        text.remove_prefix(end + 1);
        end = FindChar(text, LineEnd);
    }
}

/// The name that a variable is looked for by: what stands in front of its first `=`. All of it where nothing stands
/// behind that, or there is none: "A=" is looked for as "A==".
TextView NameOf(TextView variable) {
    const std::size_t equals = variable.find(Equals);
    return equals + 1 < variable.size() ? variable.substr(0, equals) : variable;
}

/// The position of a name with a `=` behind it in a list, 0 for none. The name is a pattern; one in which nothing is
/// special can only stand in front of one of the list's `=`.
std::int32_t FindVariable(TextView list, TextView name) {
    if (modStringTools::HasSpecial(name)) {
        std::int32_t first = 0;
        std::int32_t last = 0;
        return modStringTools::FindPattern(1, list, Text(name) + Equals, first, last, false);
    }
    for (std::size_t equals = FindChar(list, Equals); equals != TextView::npos;
         equals = FindChar(list, Equals, equals + 1))
        if (equals >= name.size() && SameIgnoringCase(list.substr(equals - name.size(), name.size()), name))
            return static_cast<std::int32_t>(equals - name.size() + 1);
    return 0;
}

/// The position that the old variable at position `first` of a list ends at. This is what the pattern "=.+|" finds from
/// there on, less one character: up to the last bar, if anything but the bar itself stands between it and the `=`;
/// otherwise a value of one character at the list's end, bar or no bar, of which nothing but the `=` is left then.
std::int32_t EndOfOldVariable(TextView list, std::int32_t first) {
    const std::size_t equals = FindChar(list, Equals, static_cast<std::size_t>(first - 1));
    if (equals == TextView::npos)
        return Length(list);
    const std::size_t bar = list.rfind(Bar);
    if (bar != TextView::npos && bar >= equals + 2)
        return static_cast<std::int32_t>(bar);
    const bool oneCharacter = list.size() >= equals + 2 && list[list.size() - 2] == Equals;
    return Length(list) - (oneCharacter ? 1 : 0);
}

/// A slot's text behind its number and the bar that ends the number.
TextView WithoutNumber(TextView slot) {
    return slot.substr(slot.find(Bar) + 1);
}

/// Cuts off what stands in front of the first bar, and the bar; all of it where there is none.
TextView TakeItem(TextView& list) {
    const std::size_t end = std::min(list.find(Bar), list.size());
    const TextView item = list.substr(0, end);
    list.remove_prefix(std::min(end + 1, list.size()));
    return item;
}

/// The items of a list that bars part: one more than there are bars, so an empty list is one empty item.
void SplitList(TextView list, std::vector<Text>& items) {
    std::size_t count = 0;
    std::size_t bar = 0;
    do {
        bar = FindChar(list, Bar);
        if (count == items.size())
            items.emplace_back();
        items[count++] = list.substr(0, bar);
        list.remove_prefix(bar == TextView::npos ? 0 : bar + 1);
    } while (bar != TextView::npos);
    items.resize(count);
}

} // namespace

bool DecodeBlob(TextView blob) {
    if (!BeginsWithTag(blob, StartTag) || !HasExactEndLine(blob))
        return false;
    LastTags tags = FindLastTags(blob);
    Decoder.ConnectSeen = tags.Connect != TextView::npos;
    if (Decoder.ConnectSeen) {
        // All but the inside of the tag is dropped, which leaves no lines: a connecting BLob carries nothing else.
        blob = InsideTag(blob, tags.Connect, ConnectTag);
        Decoder.ConnectedID = InsideQuotes(blob);
        tags = FindLastTags(blob);
    }
    if (!OriginAccepted(blob, tags.Origin))
        return false;
    AddResultSlot();
    Decoder.Variables = u"ORIGIN=";
    Decoder.Variables += Decoder.ConnectedID;
    ReadLines(blob);
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
    SplitList(WithoutNumber(Decoder.SlotTypes[slot]), Decoder.ResultTypes);
    SplitList(WithoutNumber(Decoder.SlotVars[slot]), Decoder.ResultVars);
    // A value with a bar in it pushes the unit out: "1|a|b|ms" is the value "a" with the unit "b".
    TextView valueAndUnit = WithoutNumber(Decoder.SlotValues[slot]);
    Decoder.ResultValue = TakeItem(valueAndUnit);
    Decoder.ResultUnit = TakeItem(valueAndUnit);
    return true;
}

bool ResultsWait() {
    const auto end = Decoder.SlotTypes.begin() + Decoder.SlotCount;
    return std::any_of(Decoder.SlotTypes.begin(), end, [](const Text& types) { return !types.empty(); });
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
    Decoder.SlotTypes.emplace_back();
    Decoder.SlotVars.emplace_back();
    Decoder.SlotValues.emplace_back();
}

// Records that were downloaded depend on what the matcher makes of this, odd as it is: the old variable is taken to end
// at the list's last bar and not at the next one, so "ORIGIN=X|A=1|B=2|C=3" becomes "ORIGIN=X|A=9|C=3" with "A=9"; and
// an old value of one character at the list's end stays: "ORIGIN=X|B=2" becomes "ORIGIN=X|B=52" with "B=5".
void SetDescriptiveVar(Text& list, TextView variable) {
    std::int32_t first = FindVariable(list, NameOf(variable));
    if (first == 0) {
        list.append(1, Bar).append(variable);
        return;
    }
    std::int32_t last = EndOfOldVariable(list, first);
    modStringTools::ReplaceRange(list, variable, first, last);
}

Text QuotedValue(TextView line) {
    return Text(InsideQuotes(line));
}

void SetBlobError(std::int16_t code, const Text& text) {
    Decoder.BlobErrorCode = code;
    Decoder.BlobErrorText = text;
}

} // namespace modBLob
