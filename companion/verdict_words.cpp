// SPDX-License-Identifier: MIT
#include "companion/verdict_words.h"

#include "src/blob/blob_text.h"

namespace companion {

using platform::Fate;
using platform::Verdict;

namespace {

constexpr std::size_t LongestPart = 40; // characters; a value may be longer than a window is wide
constexpr auto Left = Outcome::Left;
constexpr auto Alarm = Outcome::Alarm;

Text Shown(Text text) {
    for (char16_t& character : text)
        character = character < u' ' || character == u'\x7f' ? u' ' : character;
    if (text.size() <= LongestPart)
        return text;
    const char16_t last = text[LongestPart - 1];
    const bool isHalf = last >= 0xD800 && last <= 0xDBFF; // its second half would be cut off
    text.resize(isHalf ? LongestPart - 1 : LongestPart);
    return text + u"…";
}

/// "Moisture 14.1 %".
Text ResultText(const platform::Reading& reading) {
    const Text type = reading.Types.empty() ? Text() : Shown(reading.Types.front());
    return (type.empty() ? type : type + u" ") + Shown(modBLob::ValueAndUnitOf(reading));
}

Text Quoted(const Text& text) {
    return u"\"" + Shown(text) + u"\"";
}

Text NoRowText(const platform::Reading& reading, TextView driver) {
    const Text type = reading.Types.empty() ? Text() : reading.Types.front();
    return u"○ refused: no row of " + Shown(Text(driver)) + u" asks for " +
           (type.empty() ? Text(u"a result without a type") : Quoted(type));
}

Text OriginText(const Verdict& verdict) {
    const Text& seen = verdict.Reading.Origin;
    const Text& expected = verdict.Expected;
    return u"○ refused: " + (seen.empty() ? Text(u"it names no instrument") : u"from " + Shown(seen)) +
           (expected.empty() ? Text(u", no instrument is connected") : u", connected is " + Shown(expected));
}

} // namespace

VerdictWords WordsOf(const Verdict& verdict, TextView driver) {
    const Text result = ResultText(verdict.Reading);
    const Text field = Shown(verdict.Field);
    switch (verdict.Fate) {
    case Fate::Taken:
        return {u"● " + result + u" → " + field};
    case Fate::Replaced:
        return {u"● " + result + u" → " + field + u", in place of " + Shown(verdict.Old)};
    case Fate::Kept:
        return {u"○ " + field + u" keeps " + Shown(verdict.Old) + u", not " + result, Left};
    case Fate::NoType:
        return {u"● " + result + u" → " + field + u", without a type"};
    case Fate::OpenField:
        return {u"● into the open field: " + field + u", " + result, Alarm};
    case Fate::NoColumn:
        return {u"● shown, but no column of " + verdict.File + u" holds it", Alarm};
    case Fate::NoRecord:
        return {u"● shown, but " + verdict.File + u" has no record for it", Alarm};
    case Fate::Trace:
        return {u"● " + result + u", shown here and not stored", Left};
    case Fate::NoRow:
        return {NoRowText(verdict.Reading, driver), Alarm};
    case Fate::Origin:
        return {OriginText(verdict), Alarm};
    case Fate::Connect:
        return {u"○ refused: " + result + u" came with the connection", Alarm};
    case Fate::Shape:
        return {u"○ refused: the end tag of its BLob is not exact", Alarm};
    case Fate::Waiting:
        return {u"○ waits: another BLob of its burst was refused", Alarm};
    case Fate::OffScreen:
        return {u"○ refused: no record is on the screen", Alarm};
    case Fate::Emptied:
        return {u"○ lost: " + result + u" came while a question was open", Alarm};
    }
    return {};
}

} // namespace companion
