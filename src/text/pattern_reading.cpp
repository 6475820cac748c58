// SPDX-License-Identifier: MIT
#include "src/text/pattern_reading.h"

#include "src/text/pattern_attempts.h"

#include <algorithm>

// The dialect. A pattern is a sequence of elements, each of which matches one character. The suites of rows in
// tests/unit/src/text/patterns_test.cpp have the numbers of these rules, with what each accepts and refuses:
//
//  1. `.`            any character, carriage return and line feed included
//  2. `\s`  `\S`     a blank or a tab; anything else. Carriage return and line feed are not white space here
//  3. `\w`  `\W`     a to z, A to Z, 0 to 9 or `_`; anything else, also "ä"
//  4. `\d`  `\D`     0 to 9; anything else
//  5. `\\` `\+` `\$` `\^` `\.` `\/`   the second character, exactly, with either case flag
//  6. `\` and any other character     no character: "\q" refuses "q", and "\|" refuses "|"
//  7. `\` as the last character       a backslash
//  8. any other single character      itself; without the case flag in any case. "[", "(", "|", "*", "?" too
//
// and around the elements:
//
//  9. `^` as the first and `$` as the last character of the pattern anchor the match to the ends of the text; elsewhere
//     they match nothing: "ab$" matches the second "ab" of "abab", "a$b" refuses "ab". A last `$` is an anchor whatever
//     is before it: "a\$" refuses "a$" and accepts "a\".
// 10. `+` after an element repeats it, once or more. It goes on as long as the element matches and the rest of the
//     pattern, after the `+`, can still be found somewhere after the current character; the first character for which
//     this fails belongs to the rest. ".+X" matches "aXbX" of "aXbXc". "aX+b" refuses "aXXc".
// 11. If the text ends while the pattern is at a `+`, the match holds, although nothing after the `+` was compared:
//     "=.+|" matches "=1" of "A=1", and yet refuses "A=12". Quoted values without their closing quote, and the
//     replacement of the last variable of a list, depend on this.
// 12. The rest of 10 is a pattern of its own, with its own anchors: a `^` at its start is one, and never holds, because
//     a rest is searched for after the start of the text; a `$` at its end is one if the pattern ends in "$$".
// 13. `+` at the start, of the pattern or of a rest, repeats the element read last. At first there is none, and the
//     `+` is skipped: "+b" matches "b" of "abc". After an attempt that failed it is the element that refused:
//     "+abb" matches "babb" of "ababb".
//
// After an attempt fails, the next one begins one character later. Evaluated forwards, this takes time that doubles
// with each `+`. Evaluated backwards it does not: the outcome of an attempt that has reached an element at a place
// depends only on these two, so that the outcomes for one element, at all places, follow from those for the next
// element. They are computed for 64 places at a time: an outcome is a few binary digits, and each digit is a set of
// places:
//
//   an element   where it matches, the outcome is the next element's at the place after; elsewhere it is a refusal
//   a `+`        where it goes on, the outcome is its own at the place after; elsewhere it is the next element's
//   a rest       is found where an attempt for it holds, and where one is refused and the rest is found from the next
//                place
//
// The last two pass a result on over any number of places, which Spread does. The first two digits say whether the
// match holds and whether it is refused; which element refuses takes further digits, and only rule 13 needs them. The
// end of a match is computed only for the match that is returned, by walking through it.

namespace modStringTools {

namespace {

constexpr std::size_t DigitsWithoutRefuser = 2;

template <typename Belongs>
void FillSet(TextView text, PlaceBits* places, Belongs belongs) {
    std::size_t word = 0;
    PlaceBits bits = 0;
    for (std::size_t left = 1; left <= text.size(); ++left) {
        if (left % PlacesOfWord == 0) {
            places[word++] = bits;
            bits = 0;
        }
        bits |= static_cast<PlaceBits>(belongs(text[text.size() - left])) << left % PlacesOfWord;
    }
    places[word] = bits;
}

/// Replaces a set by its complement within the text.
void Complement(PlaceBits* places, std::size_t length) {
    const std::size_t words = WordsFor(length);
    for (std::size_t word = 0; word < words; ++word)
        places[word] = ~places[word];
    places[0] &= ~PlaceBits{1};
    places[words - 1] &= (BitOf(length) << 1U) - 1;
}

void FillSetOfClass(TextView text, Element element, PlaceBits* places) {
    if (element == Blank || element == NoBlank)
        FillSet(text, places, IsBlank);
    else if (element == WordCharacter || element == NoWordCharacter)
        FillSet(text, places, IsWord);
    else if (element == Digit || element == NoDigit)
        FillSet(text, places, IsDigit);
    else
        std::fill_n(places, WordsFor(text.size()), 0);
    if (element == AnyCharacter || element == NoBlank || element == NoWordCharacter || element == NoDigit)
        Complement(places, text.size());
}

void FillSetsOfSingles(PatternReading& reading) {
    const std::size_t words = reading.Words;
    const auto kinds = static_cast<std::size_t>(reading.Elements.Next);
    std::fill(reading.Matching + FirstSingle * words, reading.Matching + kinds * words, 0);
    std::size_t left = reading.Length();
    for (const char16_t character : reading.Searched) {
        const Element element = SingleFor(reading.Elements, character);
        if (element != NoElement)
            reading.Matching[static_cast<std::size_t>(element) * words + left / PlacesOfWord] |= BitOf(left);
        --left;
    }
}

void FillMatchingSets(PatternReading& reading) {
    for (Element element = Nothing; element < FirstSingle; ++element)
        if (const auto number = static_cast<std::size_t>(element); reading.Elements.Classes[number])
            FillSetOfClass(reading.Searched, element, reading.Matching + number * reading.Words);
    if (reading.Elements.Next > FirstSingle)
        FillSetsOfSingles(reading);
}

void SetAll(PatternReading& reading, Outcome outcome) {
    for (std::size_t digit = 0; digit < reading.Digits; ++digit)
        std::fill_n(reading.OutcomeDigit(digit), reading.Words, (outcome >> digit & 1U) != 0 ? ~PlaceBits{0} : 0);
}

void SetBehindTheEnd(PatternReading& reading, Outcome outcome) {
    for (std::size_t digit = 0; digit < reading.Digits; ++digit) {
        PlaceBits& lowest = *reading.OutcomeDigit(digit);
        lowest = (lowest & ~PlaceBits{1}) | (outcome >> digit & 1U);
    }
}

/// Sets the outcomes after the pattern's last element.
void ReadEnd(PatternReading& reading, bool toTheEnd) {
    std::size_t readLast = reading.Count;
    while (readLast > 0 && IsRepeat(reading.At(readLast)))
        --readLast;
    SetAll(reading, toTheEnd ? RefusedBy(readLast == 0 ? NoElement : reading.At(readLast)) : Holds);
    SetBehindTheEnd(reading, Holds);
}

void ReadElement(PatternReading& reading, Element element) {
    const PlaceBits* matching = reading.MatchingOf(element);
    const std::size_t words = reading.Words;
    for (std::size_t digit = 0; digit < reading.Digits; ++digit) {
        PlaceBits* outcomes = reading.OutcomeDigit(digit);
        const PlaceBits refused = (RefusedBy(element) >> digit & 1U) != 0 ? ~PlaceBits{0} : 0;
        PlaceBits below = 0;
        for (std::size_t word = 0; word < words; ++word)
            outcomes[word] = (matching[word] & MovedForward(outcomes[word], below)) | (~matching[word] & refused);
    }
    SetBehindTheEnd(reading, RanOut);
}

/// Reads the `+` at `number`, which repeats `element`.
void ReadRepeat(PatternReading& reading, std::size_t number, Element element) {
    const PlaceBits* matching = reading.MatchingOf(element);
    const PlaceBits* rest = number == reading.Count ? matching : reading.RestIn(reading.Rests, number);
    const std::size_t words = reading.Words;
    const std::size_t digits = reading.Digits;
    SetBehindTheEnd(reading, Holds);
    for (std::size_t word = 0; word < words; ++word) {
        const PlaceBits goesOn = matching[word] & rest[word];
        if (goesOn == 0)
            continue;
        for (std::size_t digit = 0; digit < digits; ++digit) {
            PlaceBits* outcomes = reading.Outcomes + digit * words + word;
            PlaceBits below = word == 0 ? 0 : outcomes[-1] >> (PlacesOfWord - 1);
            *outcomes = Spread(goesOn, *outcomes, below);
        }
    }
}

/// Reads the adjacent `+` signs `from` to `to`. Those at the start of the pattern are left to FirstMatch.
void ReadRepeats(PatternReading& reading, std::size_t from, std::size_t to) {
    if (reading.Making != nullptr)
        for (std::size_t number = to; number >= from; --number)
            MakeRest(reading, number, to);
    if (from > 1)
        for (std::size_t number = to; number >= from; --number)
            ReadRepeat(reading, number, reading.At(from - 1));
}

void ReadAll(PatternReading& reading, bool toTheEnd) {
    ReadEnd(reading, toTheEnd);
    std::size_t number = reading.Count;
    while (number > 0) {
        if (!IsRepeat(reading.At(number))) {
            ReadElement(reading, reading.At(number--));
            continue;
        }
        const std::size_t to = number;
        while (number > 0 && IsRepeat(reading.At(number)))
            --number;
        ReadRepeats(reading, number + 1, to);
    }
}

void TakePattern(PatternReading& reading, TextView pattern) {
    reading.Count = ReadElements(pattern, reading.Elements, reading.Pattern);
}

/// Returns the number of characters before the first one at which a match may begin; the text's length if there is
/// none.
std::size_t HopelessLength(const PatternReading& reading, TextView text, std::size_t from, bool onlyThere) {
    Element* const end = reading.Pattern + reading.Count;
    const Element first = *reading.Pattern;
    if (IsRepeat(first))
        return std::all_of(reading.Pattern, end, IsRepeat) ? text.size() : from - 1;
    for (std::size_t place = from; place <= text.size(); ++place) {
        if (Matches(reading.Elements, first, text[place - 1]))
            return place - 1;
        if (onlyThere)
            break;
    }
    return text.size();
}

/// Returns a pattern with `count` of the `$` signs at its end, but with two at most: the first two may be an escaped
/// `$` and an element that matches nothing, and no attempt gets past these.
TextView WithDollars(TextView pattern, std::size_t count) {
    const std::size_t body = pattern.find_last_not_of(u'$') + 1;
    return pattern.substr(0, std::min(body + std::min<std::size_t>(count, 2), pattern.size()));
}

void TakeRoom(PatternReading& reading, bool twoSetsOfRests) {
    Element* const end = reading.Pattern + reading.Count;
    const auto repeats = static_cast<std::size_t>(std::count_if(reading.Pattern, end, IsRepeat));
    const bool doubled = std::adjacent_find(reading.Pattern, end,
                                            [](Element a, Element b) { return IsRepeat(a) && IsRepeat(b); }) != end;
    const auto kinds = static_cast<std::size_t>(reading.Elements.Next);
    reading.Words = WordsFor(reading.Length());
    reading.Digits = DigitsWithoutRefuser;
    if (doubled || IsRepeat(reading.At(1)))
        reading.Digits += static_cast<std::size_t>(std::bit_width(kinds - 1));
    const std::size_t sets = kinds + reading.Digits + repeats * (twoSetsOfRests ? 2 : 1);
    reading.Matching = reading.SetRoom.Take(sets * reading.Words);
    reading.Outcomes = reading.Matching + kinds * reading.Words;
    reading.Rests = reading.Outcomes + reading.Digits * reading.Words;
    reading.Making = reading.Rests + (twoSetsOfRests ? repeats * reading.Words : 0);
}

/// Reads a pattern that is anchored to the end of the text. A rest is anchored only by a further `$` (12), so the
/// pattern is read once for each number of `$` signs: with none, with one, and so on up to all. From two on, every
/// reading applies the same step to the result of the one before; reading ends when the result no longer changes.
void ReadWithRests(PatternReading& reading, TextView pattern) {
    const auto size = reading.Making - reading.Rests;
    PlaceBits* const forTheNext = reading.Making;
    reading.Making = reading.Rests;
    TakePattern(reading, WithDollars(pattern, 0));
    ReadAll(reading, false);
    reading.Making = forTheNext;
    const std::size_t dollars = pattern.size() - WithDollars(pattern, 0).size();
    for (std::size_t count = 0; count <= dollars; ++count) {
        if (count == dollars)
            reading.Making = nullptr; // no later reading needs them
        TakePattern(reading, WithDollars(pattern, count));
        ReadAll(reading, true);
        if (count == dollars || (count >= 2 && std::equal(reading.Rests, reading.Rests + size, reading.Making)))
            return;
        std::swap(reading.Rests, reading.Making);
    }
}

void ReadFront(PatternReading& reading) {
    while (IsRepeat(reading.At(reading.InFront + 1)))
        ++reading.InFront;
    reading.FrontTo = reading.RestsAreFree() ? 1 : reading.InFront;
    const auto rest = [&reading](std::size_t number) { return reading.RestIn(reading.Rests, number); };
    while (reading.FrontFrom < reading.FrontTo &&
           std::equal(rest(reading.FrontFrom), rest(reading.FrontFrom) + reading.Words, rest(reading.FrontFrom + 1)))
        ++reading.FrontFrom;
}

} // namespace

void ReadPattern(PatternReading& reading, TextView text, std::int32_t from, TextView pattern, bool onlyThere,
                 bool toTheEnd) {
    reading.Pattern = reading.ElementRoom.Take(pattern.size());
    TakePattern(reading, pattern);
    reading.Offset = HopelessLength(reading, text, static_cast<std::size_t>(from), onlyThere);
    reading.Hopeless = reading.Offset == text.size();
    if (reading.Hopeless)
        return;
    reading.Searched = text.substr(reading.Offset);
    const bool restsHaveEnds = toTheEnd && std::any_of(reading.Pattern, reading.Pattern + reading.Count - 1, IsRepeat);
    if (restsHaveEnds)
        for (std::size_t dollars = 0; dollars <= 2; ++dollars) // a `\` before them makes them different elements
            TakePattern(reading, WithDollars(pattern, dollars));
    TakeRoom(reading, restsHaveEnds);
    FillMatchingSets(reading);
    if (restsHaveEnds)
        ReadWithRests(reading, pattern);
    else
        ReadAll(reading, toTheEnd);
    ReadFront(reading);
}

} // namespace modStringTools
