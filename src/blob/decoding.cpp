// SPDX-License-Identifier: MIT
#include "src/blob/decoding.h"

#include "src/blob/tags.h"
#include "src/text/characters.h"
#include "src/text/patterns.h"
#include "src/text/ranges.h"

#include <algorithm>

namespace modBLob {

using modStringTools::Bar;
using modStringTools::FindChar;
using modStringTools::SameIgnoringCase;

namespace {

constexpr char16_t Equals = u'=';
constexpr char16_t Quote = u'"';
constexpr TextView OriginVariable = u"ORIGIN=";

std::int32_t Length(TextView text) {
    return static_cast<std::int32_t>(text.size());
}

/// The line may be anywhere in the text; nearly always it is the end of the text, so that is checked first.
bool HasExactEndLine(TextView blob) {
    const TextView end = blob.substr(blob.size() - std::min(blob.size(), ExactEndLine.size()));
    return BeginsWithTag(end, ExactEndLine) || HasTag(blob, ExactEndLine);
}

/// Returns the text between the first and the last double quote of a line.
TextView InsideQuotes(TextView line) {
    const std::size_t first = FindChar(line, Quote);
    if (first == TextView::npos)
        return {};
    const std::size_t last = line.rfind(Quote);
    return last == first ? TextView() : line.substr(first + 1, last - first - 1);
}

/// What the lines of a BLob have set so far, besides the decoder's Variables. Storing a result clears none of it: the
/// next result uses whatever it does not set itself.
struct LinesSoFar {
    TextView Types; ///< separated by `" "`
    TextView Value;
    bool AnyStored = false; ///< a result of this BLob was stored; the rest compares with that result
    bool NewTypes = false;
    bool NewValue = false;
    bool NewVars = false;
    std::size_t HeadOfVars = 0; ///< so many characters at the start of the variables are unchanged
    std::size_t TailOfVars = 0; ///< and so many at their end
};

/// A BLob that names no origin is accepted, whether or not an instrument is connected.
bool OriginAccepted(DecoderState& decoder, TextView text, std::size_t lastOrigin) {
    if (lastOrigin == TextView::npos || InsideQuotes(InsideTag(text, lastOrigin, OriginTag)) == decoder.ConnectedID)
        return true;
    if (decoder.ConnectedID.empty())
        SetBlobError(decoder, BlobError::NoConnection, u"BLob received without connect");
    else
        SetBlobError(decoder, BlobError::OriginMismatch, u"Origin doesn't match connected ID");
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

/// Stores the variables, except for the parts that are equal to those of the result before.
void StoreVars(ResultSlot& slot, const Text& vars, LinesSoFar& soFar) {
    if (!soFar.AnyStored) {
        slot.Vars = vars;
    } else if (!soFar.NewVars) {
        slot.HeadOfVars = vars.size();
    } else {
        slot.HeadOfVars = soFar.HeadOfVars;
        slot.TailOfVars = soFar.TailOfVars;
        slot.Vars.assign(vars, slot.HeadOfVars, vars.size() - slot.HeadOfVars - slot.TailOfVars);
    }
    soFar.NewVars = false;
    soFar.HeadOfVars = soFar.TailOfVars = vars.size();
}

void StoreResult(DecoderState& decoder, LinesSoFar& soFar, TextView unit) {
    ResultSlot& slot = decoder.Slots[static_cast<std::size_t>(decoder.SlotCount - 1)];
    slot.Filled = true;
    StoreVars(slot, decoder.Variables, soFar);
    slot.SameTypes = soFar.AnyStored && !soFar.NewTypes;
    if (!slot.SameTypes) {
        slot.Types.reserve(soFar.Types.size());
        AppendTypes(slot.Types, soFar.Types);
    }
    slot.SameValue = soFar.AnyStored && !soFar.NewValue;
    if (!slot.SameValue)
        slot.Value = soFar.Value;
    slot.Unit = unit;
    soFar.AnyStored = true;
    soFar.NewTypes = soFar.NewValue = false;
    AddResultSlot(decoder);
}

/// Returns the name by which a variable is looked for: the text before its first `=`. If nothing follows the `=`, or
/// there is none, that is the whole variable: "A=" is looked for as "A==".
TextView NameOf(TextView variable) {
    const std::size_t equals = variable.find(Equals);
    return equals + 1 < variable.size() ? variable.substr(0, equals) : variable;
}

/// Returns the 1-based position in a list of a name followed by `=`, or 0 for none. The name is a pattern; a name
/// without special characters can only be found directly before an `=` of the list.
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

/// Returns the position at which the old variable at position `first` of a list ends. It is what the pattern "=.+|"
/// finds from there on, less one character: up to the last bar, if at least one character other than that bar is
/// between it and the `=`; otherwise a value of one character at the end of the list, bar or not, of which only the `=`
/// is replaced.
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

/// The number of characters of a list that stay unchanged, at its start and at its end.
struct Kept {
    std::size_t Head = 0;
    std::size_t Tail = 0;
};

// The result of the matcher is odd, but downloaded records depend on it. The old variable is taken to end at the last
// bar of the list, not at the next one: "ORIGIN=X|A=1|B=2|C=3" with "A=9" becomes "ORIGIN=X|A=9|C=3". An old value of
// one character at the end of the list stays: "ORIGIN=X|B=2" with "B=5" becomes "ORIGIN=X|B=52".
Kept PutVariable(Text& list, TextView variable) {
    const std::size_t size = list.size();
    std::int32_t first = FindVariable(list, NameOf(variable));
    if (first == 0) {
        list.append(1, Bar).append(variable);
        return {size, 0};
    }
    std::int32_t last = EndOfOldVariable(list, first);
    const auto head = static_cast<std::size_t>(first - 1);
    const std::size_t end = std::clamp(static_cast<std::size_t>(last), head, size);
    modStringTools::ReplaceRange(list, variable, first, last);
    return {head, size - end};
}

void TakeVariable(Text& variables, TextView variable, LinesSoFar& soFar) {
    if (variables.empty()) {
        variables = variable;
        soFar.HeadOfVars = soFar.TailOfVars = 0;
    } else {
        const Kept kept = PutVariable(variables, variable);
        soFar.HeadOfVars = std::min(soFar.HeadOfVars, kept.Head);
        soFar.TailOfVars = std::min(soFar.TailOfVars, kept.Tail);
    }
    soFar.NewVars = true;
}

void ReadLine(DecoderState& decoder, TextView line, LinesSoFar& soFar) {
    if (BeginsWithTag(line, DescriptiveVarTag)) {
        TakeVariable(decoder.Variables, InsideQuotes(line), soFar);
    } else if (BeginsWithTag(line, ResultTypeTag)) {
        soFar.Types = InsideQuotes(line);
        soFar.NewTypes = true;
    } else if (BeginsWithTag(line, ResultValueTag)) {
        soFar.Value = InsideQuotes(line);
        soFar.NewValue = true;
    } else if (BeginsWithTag(line, ResultUnitTag)) {
        StoreResult(decoder, soFar, InsideQuotes(line));
    }
}

/// A text without any line end has no lines; otherwise the text after the last line end is a line too.
void ReadLines(DecoderState& decoder, TextView text) {
    std::size_t end = FindChar(text, LineEnd);
    if (end == TextView::npos)
        return;
    LinesSoFar soFar;
    for (;;) {
        ReadLine(decoder, text.substr(0, end), soFar);
        if (end == TextView::npos)
            return;
        text.remove_prefix(end + 1);
        end = FindChar(text, LineEnd);
    }
}

/// Removes the text before the first bar, and the bar, and returns that text; all of the list if it has no bar.
TextView TakeItem(TextView& list) {
    const std::size_t end = std::min(list.find(Bar), list.size());
    const TextView item = list.substr(0, end);
    list.remove_prefix(std::min(end + 1, list.size()));
    return item;
}

/// Splits a list at its bars. There is one item more than there are bars, so an empty list is one empty item.
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

/// A value with a bar in it replaces the unit: "a|b" and "ms" become the value "a" with the unit "b".
void DeliverValue(DecoderState& decoder, TextView value, TextView unit) {
    const std::size_t bar = value.find(Bar);
    TextView behind = bar == TextView::npos ? unit : value.substr(bar + 1);
    decoder.ResultValue = value.substr(0, bar);
    decoder.ResultUnit = TakeItem(behind);
}

bool HasSameVars(const ResultSlot& slot, TextView inFront) {
    return slot.Vars.empty() && slot.TailOfVars == 0 && slot.HeadOfVars == inFront.size() && slot.HeadOfVars > 0;
}

/// Changes the variables of the slot before into those of this slot.
void PutVars(const ResultSlot& slot, Text& vars) {
    if (HasSameVars(slot, vars))
        return;
    const Text tail = vars.substr(vars.size() - slot.TailOfVars);
    vars.resize(slot.HeadOfVars);
    vars.append(slot.Vars).append(tail);
}

/// Stores the results that the lines contain.
void ReadResults(DecoderState& decoder, TextView lines, TextView origin) {
    AddResultSlot(decoder);
    decoder.Variables = OriginVariable;
    decoder.Variables += origin;
    ReadLines(decoder, lines);
}

/// Returns the origin that a BLob names; that of the connected instrument if it names none.
TextView OriginOf(const LostBlob& blob) {
    const std::size_t tag = FindLastTags(*blob.Lines).Origin;
    return tag == TextView::npos ? TextView(blob.Connected) : InsideQuotes(InsideTag(*blob.Lines, tag, OriginTag));
}

} // namespace

Refusal ReadBlob(DecoderState& decoder, TextView blob) {
    if (!BeginsWithTag(blob, StartTag) || !HasExactEndLine(blob))
        return Refusal::Shape;
    LastTags tags = FindLastTags(blob);
    decoder.ConnectSeen = tags.Connect != TextView::npos;
    if (decoder.ConnectSeen) {
        // Only the inside of the tag is kept, which has no lines: a connecting BLob carries nothing else.
        blob = InsideTag(blob, tags.Connect, ConnectTag);
        decoder.ConnectedID = InsideQuotes(blob);
        tags = FindLastTags(blob);
    }
    if (!OriginAccepted(decoder, blob, tags.Origin))
        return Refusal::Origin;
    ReadResults(decoder, blob, decoder.ConnectedID);
    return Refusal::None;
}

std::size_t NextSlot(const DecoderState& decoder) {
    return decoder.SlotCount == 0 ? 0 : static_cast<std::size_t>(decoder.SlotCount - 1);
}

void VisitResults(const LostBlob& blob, const std::function<void(const platform::Reading&)>& visit) {
    DecoderState decoder;
    ReadResults(decoder, *blob.Lines, OriginOf(blob));
    while (NextResult(decoder)) {
        platform::Reading reading = CurrentResult(decoder);
        reading.Blob = blob.Lines;
        visit(reading);
    }
}

platform::Reading CurrentResult(const DecoderState& decoder) {
    platform::Reading reading = {.Types = decoder.ResultTypes,
                                 .Value = decoder.ResultValue,
                                 .Unit = decoder.ResultUnit,
                                 .Variables = decoder.ResultVars,
                                 .Origin = {}};
    if (!reading.Variables.empty() && reading.Variables.front().starts_with(OriginVariable))
        reading.Origin = reading.Variables.front().substr(OriginVariable.size());
    return reading;
}

bool NextResult(DecoderState& decoder) {
    do {
        ++decoder.SlotCursor;
        if (decoder.SlotCursor > decoder.SlotCount) {
            decoder.SlotCount = 0;
            decoder.SlotCursor = 0;
            return false;
        }
    } while (!decoder.Slots[static_cast<std::size_t>(decoder.SlotCursor - 1)].Filled);

    const ResultSlot& slot = decoder.Slots[static_cast<std::size_t>(decoder.SlotCursor - 1)];
    if (!slot.SameTypes)
        SplitList(slot.Types, decoder.ResultTypes);
    if (!HasSameVars(slot, decoder.VarsDelivered)) {
        PutVars(slot, decoder.VarsDelivered);
        SplitList(decoder.VarsDelivered, decoder.ResultVars);
    }
    if (!slot.SameValue)
        decoder.ValueDelivered = slot.Value;
    DeliverValue(decoder, decoder.ValueDelivered, slot.Unit);
    return true;
}

bool ResultsWait(const DecoderState& decoder) {
    const auto end = decoder.Slots.begin() + decoder.SlotCount;
    return std::any_of(decoder.Slots.begin(), end, [](const ResultSlot& slot) { return slot.Filled; });
}

SlotTexts TextsOfSlots(const DecoderState& decoder) {
    SlotTexts texts;
    Text types;
    Text vars;
    Text value;
    for (const ResultSlot& slot : decoder.Slots) {
        if (!slot.Filled) {
            texts.Types.emplace_back();
            texts.Vars.emplace_back();
            texts.Values.emplace_back();
            continue;
        }
        types = slot.SameTypes ? types : slot.Types;
        PutVars(slot, vars);
        value = slot.SameValue ? value : slot.Value;
        const Text number = modStringTools::NumberText(static_cast<std::int32_t>(texts.Types.size() + 1)) + Bar;
        texts.Types.push_back(number + types);
        texts.Vars.push_back(number + vars);
        texts.Values.push_back(number + value + Bar + slot.Unit);
    }
    return texts;
}

void AddResultSlot(DecoderState& decoder) {
    if (decoder.SlotCount > 0 && !decoder.Slots[static_cast<std::size_t>(decoder.SlotCount - 1)].Filled)
        return;
    ++decoder.SlotCount;
    if (decoder.SlotCount == 1) {
        decoder.Slots.clear();
        decoder.SlotCursor = 0;
    }
    decoder.Slots.emplace_back();
}

void SetDescriptiveVar(Text& list, TextView variable) {
    PutVariable(list, variable);
}

Text QuotedValue(TextView line) {
    return Text(InsideQuotes(line));
}

void SetBlobError(DecoderState& decoder, BlobError code, const Text& text) {
    decoder.BlobErrorCode = code;
    decoder.BlobErrorText = text;
}

} // namespace modBLob
