// SPDX-License-Identifier: MIT
#include "text/pattern_reading.h"

#include <algorithm>
#include <limits>
#include <utility>

// The dialect. A pattern is a sequence of elements, each of which matches one character:
//
//  1. `.`            any character, carriage return and line feed included
//  2. `\s`  `\S`     a blank or a tab; anything else. Carriage return and line feed are no white space here
//  3. `\w`  `\W`     a to z, A to Z, 0 to 9 or `_`; anything else, "ä" among it
//  4. `\d`  `\D`     0 to 9; anything else
//  5. `\\` `\+` `\$` `\^` `\.` `\/`   the second character, exactly, whatever the case flag says
//  6. `\` and any other character     nothing: "\q" refuses "q", and "\|" refuses "|"
//  7. `\` as the last character       a backslash
//  8. any other single character      itself; without the case flag in any case. "[", "(", "|", "*", "?" are such
//
// and around the elements:
//
//  9. `^` as the first and `$` as the last character of the pattern tie the match to the text's two ends, and elsewhere
//     match nothing: "ab$" takes the second "ab" of "abab", "a$b" refuses "ab". The `$` is one whatever stands in front
//     of it: "a\$" refuses "a$" and accepts "a\".
// 10. `+` behind an element repeats it, once or more. It goes on as long as the element matches and the rest of the
//     pattern, behind the `+`, can still be found somewhere behind the character at hand; the first character for which
//     that isn't so is the rest's. ".+X" takes "aXbX" of "aXbXc". "aX+b" refuses "aXXc".
// 11. When the text ends while the pattern stands on a `+`, the match holds, although nothing behind the `+` was
//     compared: "=.+|" takes "=1" of "A=1", and yet refuses "A=12". Quoted values that lack their closing quote, and
//     the replacement of the last variable of a list, are built on that.
// 12. The rest of 10 is a pattern of its own, with its own anchors: a `^` in front of it is one, and never holds, since
//     a rest is searched for behind the text's beginning; a `$` behind it is one when the pattern ends in "$$".
// 13. `+` at the very front, of the pattern or of a rest, repeats what was read last. At first that is nothing, and the
//     `+` is stepped over: "+b" takes "b" of "abc". After an attempt that failed it is the element that refused:
//     "+abb" takes "babb" of "ababb".
//
// An attempt that fails is begun again one character further on. Doing all that forwards takes time that doubles with
// each `+`. Backwards it doesn't: what becomes of an attempt that has come to some element at some place depends on
// nothing but these two, so that the outcomes for one element, at all places, follow from those for the next one.

namespace modStringTools {

namespace {

enum class Kind { Any, Blank, NoBlank, Word, NoWord, Digit, NoDigit, Exactly, InAnyCase, Nothing, Repeat };

struct Element {
    Kind What = Kind::Nothing;
    char16_t Character = 0; ///< of Exactly; of InAnyCase, in lower case

    bool operator==(const Element& other) const { return What == other.What && Character == other.Character; }
};

using Flags = std::vector<char>;

constexpr std::int32_t TextRanOut = 0;
constexpr std::int32_t NotBegun = std::numeric_limits<std::int32_t>::min();

bool IsBlank(char16_t character) {
    return character == u' ' || character == u'\t';
}

bool IsDigit(char16_t character) {
    return character >= u'0' && character <= u'9';
}

bool IsWord(char16_t character) {
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z') || IsDigit(character) ||
           character == u'_';
}

Element EscapedElement(char16_t letter) {
    switch (letter) {
    case u's':
        return {Kind::Blank};
    case u'S':
        return {Kind::NoBlank};
    case u'w':
        return {Kind::Word};
    case u'W':
        return {Kind::NoWord};
    case u'd':
        return {Kind::Digit};
    case u'D':
        return {Kind::NoDigit};
    case u'\\':
    case u'+':
    case u'$':
    case u'^':
    case u'.':
    case u'/':
        return {Kind::Exactly, letter};
    default:
        return {Kind::Nothing};
    }
}

Element SingleElement(char16_t character, bool caseSensitive) {
    switch (character) {
    case u'.':
        return {Kind::Any};
    case u'+':
        return {Kind::Repeat};
    case u'^':
    case u'$':
        return {Kind::Nothing};
    case u'\\':
        return {Kind::Exactly, character};
    default:
        return caseSensitive || !HasCases(character) ? Element{Kind::Exactly, character}
                                                     : Element{Kind::InAnyCase, LowerChar(character)};
    }
}

std::vector<Element> Elements(TextView pattern, bool caseSensitive) {
    std::vector<Element> elements;
    elements.reserve(pattern.size());
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == u'\\' && i + 1 < pattern.size())
            elements.push_back(EscapedElement(pattern[++i]));
        else
            elements.push_back(SingleElement(pattern[i], caseSensitive));
    }
    return elements;
}

bool Matches(const Element& element, char16_t character) {
    switch (element.What) {
    case Kind::Any:
        return true;
    case Kind::Blank:
        return IsBlank(character);
    case Kind::NoBlank:
        return !IsBlank(character);
    case Kind::Word:
        return IsWord(character);
    case Kind::NoWord:
        return !IsWord(character);
    case Kind::Digit:
        return IsDigit(character);
    case Kind::NoDigit:
        return !IsDigit(character);
    case Kind::Exactly:
        return character == element.Character;
    case Kind::InAnyCase:
        return LowerChar(character) == element.Character;
    case Kind::Nothing:
    case Kind::Repeat:
        break;
    }
    return false;
}

bool IsRepeat(const Element& element) {
    return element.What == Kind::Repeat;
}

/// The state of a reading on its way to the pattern's beginning. Elements are numbered from 1, places in the text too.
struct Reader {
    TextView Searched;
    std::vector<Element> Pattern;
    std::vector<std::size_t> Alike; ///< by number: the first element that is the same; no other one refuses
    Outcomes Here; ///< of an attempt that stands, with a match begun, at the element read last and at each place
    std::vector<Outcomes> AttemptAfter; ///< as in PatternReading; empty but at a `+` at the pattern's front
    std::vector<Flags> Rests;           ///< see ReadRests; by the number of the `+`

    std::size_t Length() const { return Searched.size(); }
    std::size_t Count() const { return Pattern.size(); }
    const Element& At(std::size_t number) const { return Pattern[number - 1]; }
    char16_t CharacterAt(std::size_t place) const { return Searched[place - 1]; }
};

void TakePattern(Reader& reader, TextView pattern, bool caseSensitive) {
    reader.Pattern = Elements(pattern, caseSensitive);
    reader.Alike.assign(1, 0);
    for (const Element& element : reader.Pattern)
        reader.Alike.push_back(static_cast<std::size_t>(
            std::find(reader.Pattern.begin(), reader.Pattern.end(), element) - reader.Pattern.begin() + 1));
}

std::int32_t RefusedBy(const Reader& reader, std::size_t number) {
    return -static_cast<std::int32_t>(reader.Alike[number]);
}

/// Behind the pattern's last element.
void ReadEnd(Reader& reader, bool toTheEnd) {
    std::size_t readLast = reader.Count();
    while (readLast > 0 && IsRepeat(reader.At(readLast)))
        --readLast;
    reader.Here.resize(reader.Length() + 2);
    for (std::size_t place = 1; place <= reader.Length() + 1; ++place)
        reader.Here[place] = static_cast<std::int32_t>(place - 1);
    if (toTheEnd)
        std::fill(reader.Here.begin(), reader.Here.end() - 1, RefusedBy(reader, readLast));
}

void ReadElement(Reader& reader, std::size_t number) {
    const Element element = reader.At(number);
    const std::int32_t refused = RefusedBy(reader, number);
    for (std::size_t place = 1; place <= reader.Length(); ++place)
        reader.Here[place] = Matches(element, reader.CharacterAt(place)) ? reader.Here[place + 1] : refused;
    reader.Here[reader.Length() + 1] = TextRanOut;
}

/// One `+` over `element`, in front of the element `next`. `rest` tells from which places the pattern behind the `+` is
/// found; null where nothing is behind it.
void Repeat(const Reader& reader, const Element& element, const Flags* rest, std::size_t next, Outcomes& outcomes) {
    outcomes[reader.Length() + 1] = static_cast<std::int32_t>(reader.Length());
    for (std::size_t place = reader.Length(); place > 0; --place) {
        if (!Matches(element, reader.CharacterAt(place)) || (rest != nullptr && (*rest)[place + 1] == 0))
            continue;
        const std::int32_t outcome = outcomes[place + 1];
        outcomes[place] = outcome == NotBegun ? RefusedBy(reader, next) : outcome;
    }
}

/// Which attempt comes after one that came to nothing.
std::size_t NextAttempt(const std::vector<Outcomes>& attemptAfter, std::int32_t outcome) {
    return attemptAfter.size() == 1 || outcome == NotBegun ? 0 : static_cast<std::size_t>(-outcome);
}

/// From which places on a search finds a match, where it goes on with the same attempts after each that failed.
Flags FoundFrom(const Outcomes& attempts) {
    Flags found(attempts.size(), 0);
    for (std::size_t place = attempts.size() - 2; place > 0; --place)
        found[place] = attempts[place] < 0 ? found[place + 1] : attempts[place] != TextRanOut;
    return found;
}

/// The same with attempts that depend on the element that was read last.
Flags FoundFrom(const std::vector<Outcomes>& attemptAfter) {
    if (attemptAfter.size() == 1)
        return FoundFrom(attemptAfter.front());
    const std::size_t places = attemptAfter.front().size();
    std::vector<std::size_t> present;
    for (std::size_t after = 0; after < attemptAfter.size(); ++after)
        if (!attemptAfter[after].empty())
            present.push_back(after);
    Flags found(places, 0);
    Flags further(attemptAfter.size(), 0); // found from one place further on, by the element read last
    Flags here = further;
    for (std::size_t place = places - 2; place > 0; --place) {
        for (const std::size_t after : present) {
            const std::int32_t outcome = attemptAfter[after][place];
            here[after] = outcome < 0 ? further[NextAttempt(attemptAfter, outcome)] : outcome != TextRanOut;
        }
        further.swap(here);
        found[place] = further[0];
    }
    return found;
}

/// Where the rests have not the pattern's own end (see ReadRests): gives what the reading before this one found, and
/// leaves `found` to the next one.
void ExchangeRest(Reader& reader, std::size_t number, Flags& found) {
    Flags& left = reader.Rests[number];
    if (left.empty())
        left = found;
    else
        left.swap(found);
}

/// The attempts of a search for the pattern behind the `+` signs that end at `to`, as long as these are none of its
/// own. With a `+` at its front (13) there is one for each element that may have been read last, and a refusal by the
/// very first element is told from all others: as no match was begun, no `+` is gone back to.
std::vector<Outcomes> AttemptsBehind(const Reader& reader, std::size_t to, bool repeatsInFront) {
    std::vector<Outcomes> attempts{reader.Here};
    if (!repeatsInFront || to == reader.Count())
        return attempts;
    for (std::size_t place = 1; place <= reader.Length(); ++place)
        if (!Matches(reader.At(to + 1), reader.CharacterAt(place)))
            attempts.front()[place] = NotBegun;
    attempts.resize(reader.Count() + 1);
    for (std::size_t number = to + 1; number <= reader.Count(); ++number)
        if (!IsRepeat(reader.At(number)))
            attempts[reader.Alike[number]] = attempts.front();
    return attempts;
}

/// The `+` signs `from` to `to`, which stand side by side.
void ReadRepeats(Reader& reader, std::size_t from, std::size_t to) {
    const bool inFront = from == 1;
    const bool atEnd = to == reader.Count();
    std::vector<Outcomes> attempts = AttemptsBehind(reader, to, inFront || from < to);
    for (std::size_t number = to; number >= from; --number) {
        Flags found = atEnd ? Flags(reader.Length() + 2, 0) : FoundFrom(attempts);
        if (!reader.Rests.empty())
            ExchangeRest(reader, number, found);
        const Flags* rest = number == reader.Count() ? nullptr : &found;
        if (!inFront)
            Repeat(reader, reader.At(from - 1), rest, to + 1, reader.Here);
        for (std::size_t after = 1; after < attempts.size(); ++after)
            if (!attempts[after].empty())
                Repeat(reader, reader.At(after), rest, to + 1, attempts[after]);
    }
    if (inFront)
        reader.AttemptAfter = std::move(attempts);
}

void ReadAll(Reader& reader, bool toTheEnd) {
    ReadEnd(reader, toTheEnd);
    std::size_t number = reader.Count();
    while (number > 0) {
        if (!IsRepeat(reader.At(number))) {
            ReadElement(reader, number--);
            continue;
        }
        const std::size_t to = number;
        while (number > 0 && IsRepeat(reader.At(number)))
            --number;
        ReadRepeats(reader, number + 1, to);
    }
}

/// The characters in front of the first one at which a match may begin; the text's length for none.
std::size_t HopelessLength(TextView text, std::size_t from, const std::vector<Element>& pattern, bool onlyThere) {
    if (std::all_of(pattern.begin(), pattern.end(), IsRepeat))
        return text.size();
    if (IsRepeat(pattern.front()))
        return from - 1;
    for (std::size_t place = from; place <= text.size(); ++place) {
        if (Matches(pattern.front(), text[place - 1]))
            return place - 1;
        if (onlyThere)
            break;
    }
    return text.size();
}

/// The rests of a pattern that is tied to the text's end. They are tied to it by a further `$` alone (12), so that the
/// pattern is read as often as it has ends: without any `$`, with one, and so on up to all but the pattern's own.
void ReadRests(Reader& reader, TextView pattern, bool caseSensitive) {
    reader.Rests.resize(reader.Count() + 1);
    const std::size_t body = pattern.find_last_not_of(u'$') + 1;
    TakePattern(reader, pattern.substr(0, body), caseSensitive);
    ReadAll(reader, false);
    for (std::size_t length = body; length < pattern.size(); ++length) {
        TakePattern(reader, pattern.substr(0, length), caseSensitive);
        ReadAll(reader, true);
    }
    TakePattern(reader, pattern, caseSensitive);
}

} // namespace

PatternReading ReadPattern(TextView text, std::int32_t from, TextView pattern, bool onlyThere, bool toTheEnd,
                           bool caseSensitive) {
    Reader reader;
    TakePattern(reader, pattern, caseSensitive);
    const std::size_t hopeless = HopelessLength(text, static_cast<std::size_t>(from), reader.Pattern, onlyThere);
    PatternReading reading;
    reading.Done = true;
    reading.TextLength = static_cast<std::int32_t>(text.size());
    reading.Offset = static_cast<std::int32_t>(hopeless);
    if (hopeless == text.size())
        return reading;
    reader.Searched = text.substr(hopeless);
    if (toTheEnd && std::any_of(reader.Pattern.begin(), reader.Pattern.end() - 1, IsRepeat))
        ReadRests(reader, pattern, caseSensitive);
    ReadAll(reader, toTheEnd);
    if (reader.AttemptAfter.empty())
        reader.AttemptAfter.push_back(std::move(reader.Here));
    reading.AttemptAfter = std::move(reader.AttemptAfter);
    return reading;
}

std::int32_t FirstMatch(const PatternReading& reading, std::int32_t from, std::int32_t& last) {
    std::size_t after = 0;
    for (std::int32_t place = std::max(from - reading.Offset, 1); place <= reading.TextLength - reading.Offset;
         ++place) {
        const std::int32_t outcome = reading.AttemptAfter[after][static_cast<std::size_t>(place)];
        if (outcome == TextRanOut)
            break;
        if (outcome > 0) {
            last = outcome + reading.Offset;
            return place + reading.Offset;
        }
        after = NextAttempt(reading.AttemptAfter, outcome);
    }
    last = 0;
    return 0;
}

} // namespace modStringTools
