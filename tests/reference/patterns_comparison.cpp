// SPDX-License-Identifier: MIT
#include "tests/reference/patterns_comparison.h"

#include "src/text/pattern_reading.h"
#include "src/text/patterns.h"
#include "tests/reference/patterns_reference.h"
#include "tests/reference/shown.h"

#include <algorithm>
#include <iterator>

namespace reference {

namespace {

/// Each character that has a meaning in a pattern, few others, and two beyond ASCII for case folding.
constexpr TextView Anything = u"ab=|+.^$\\\"[]\r\n \t1_sdwSDWK\u212A\u00C4";
/// Few characters, for long matches and for attempts that fail late.
constexpr TextView Repetitive = u"aab.+$\\";

constexpr TextView Elements[] = {u"a", u"a", u"b", u".", u".", u"\\w", u"\\S", u"\\d", u"A", u"1", u"\\.", u"\\W"};
constexpr TextView ElementsBeforeAnEnd[] = {u"a", u"b", u".", u"a+", u".+", u"\\", u"+"};
constexpr TextView Fronts[] = {u"+", u"++", u"b++", u"^+", u"a+++", u".++"};
constexpr TextView Ends[] = {u"$", u"$$", u"$$$", u"\\$$", u"\\$$$", u"$$$$$", u"+$", u"+$$"};

constexpr TextView OwnPatterns[] = {u"^[BLob", u"^[/BLob", u"[/BLob]\r",  u"[CONNECT",   u"^.+[CONNECT",
                                    u"].+$",   u"[ORIGIN", u"^.+[ORIGIN", u"\".+\"",     u"=.+$",
                                    u"\\d+|",  u"=.+|",    u"A=",         u"A+=",        u"\r",
                                    u"\r\n",   u"\n",      u"\" \"",      u"^[RESULT_T", u"^[DESCRIPTIVE_VAR"};
constexpr TextView OwnPieces[] = {u"[BLob]", u"[/BLob]", u"[/blob]\r", u"[CONNECT",     u"[ORIGIN", u"\"", u"\" \"",
                                  u"]",      u"=",       u"|",         u"12",           u"A",       u"aa", u"\r",
                                  u"\n",     u"\r\n",    u" ",         u"[RESULT_TYPE", u"[DESCRI"};

Text Drawn(Choices& choices, TextView alphabet, std::uint32_t longest) {
    Text text(choices.Below(longest + 1), u' ');
    for (char16_t& character : text)
        character = alphabet[choices.Below(static_cast<std::uint32_t>(alphabet.size()))];
    return text;
}

template <std::size_t Count>
Text Joined(Choices& choices, const TextView (&pieces)[Count], std::uint32_t most) {
    Text text;
    for (std::uint32_t left = choices.Below(most + 1); left > 0; --left)
        text += choices.Of(pieces);
    return text;
}

/// Replaces all repetitions but the first `most`: the literal matcher's time has their number as its exponent.
Text WithFewRepetitions(Text pattern, std::uint32_t most) {
    std::uint32_t met = 0;
    for (char16_t& character : pattern)
        if (character == u'+' && ++met > most)
            character = u'a';
    return pattern;
}

Text RepeatedElements(Choices& choices, std::uint32_t most, std::uint32_t oneIn) {
    Text pattern;
    for (std::uint32_t left = choices.Below(most + 1); left > 0; --left) {
        pattern += choices.Of(Elements);
        if (choices.OneIn(oneIn))
            pattern += u'+';
    }
    return pattern;
}

Text RowsOfRepetitions(Choices& choices, std::uint32_t most) {
    Text pattern;
    for (std::uint32_t left = choices.Below(most + 1); left > 0; --left) {
        pattern += choices.Of(Elements);
        pattern.append(choices.OneIn(2) ? choices.Below(4) : 0, u'+');
    }
    return pattern;
}

struct Case {
    Text Searched;
    Text Pattern;
};

Case ShortCase(Choices& choices) {
    switch (choices.Below(7)) {
    case 0:
        return {Drawn(choices, Anything, 10), Drawn(choices, Anything, 6)};
    case 1:
        return {Drawn(choices, Anything.substr(0, 4 + choices.Below(8)), 10), Drawn(choices, Anything, 6)};
    case 2:
        return {Drawn(choices, Repetitive, 10), Drawn(choices, Repetitive, 6)};
    case 3:
        return {Drawn(choices, u"aaab1- ", 10), RepeatedElements(choices, 5, 3)};
    case 4:
        return {Drawn(choices, u"aaab1-", 10), Text(choices.Of(Fronts)) + RepeatedElements(choices, 4, 4)};
    case 5:
        return {Drawn(choices, u"aab1$", 10),
                Text(choices.OneIn(2) ? u"+" : u"") + RowsOfRepetitions(choices, 5) + Text(choices.Of(Ends))};
    default:
        return {Drawn(choices, u"aab$\\", 8), Joined(choices, ElementsBeforeAnEnd, 4) + Text(choices.Of(Ends))};
    }
}

Text Runs(Choices& choices, TextView alphabet, std::uint32_t shortest) {
    Text text;
    while (text.size() < shortest)
        text.append(1 + choices.Below(choices.OneIn(3) ? 70 : 3),
                    alphabet[choices.Below(static_cast<std::uint32_t>(alphabet.size()))]);
    return text;
}

struct Match {
    bool Found = false;
    std::int32_t First = 0;
    std::int32_t Last = 0;

    bool operator==(const Match& other) const {
        return Found == other.Found && First == other.First && Last == other.Last;
    }
};

std::string Told(const Match& match) {
    return (match.Found ? "a match, " : "no match, ") + std::to_string(match.First) + " to " +
           std::to_string(match.Last);
}

std::int32_t Start(Choices& choices, const Text& text) {
    if (choices.Below(3) != 0)
        return 1;
    return static_cast<std::int32_t>(choices.Below(static_cast<std::uint32_t>(text.size()) + 5)) - 2;
}

/// True for the cases that use FindPattern, and pass its result variable as its start too.
bool FindsWithItsOwnResult(Choices& choices) {
    return choices.OneIn(16);
}

std::string Compare(Choices& choices, const Text& text, const Text& pattern) {
    const bool caseSensitive = choices.OneIn(4);
    const std::int32_t start = Start(choices, text);
    Match product{false, static_cast<std::int32_t>(choices.Below(4)), static_cast<std::int32_t>(choices.Below(4))};
    Match literal = product;
    if (FindsWithItsOwnResult(choices)) {
        modStringTools::FindPattern(product.First, text, pattern, product.First, product.Last, caseSensitive);
        FindPattern(literal.First, text, pattern, literal.First, literal.Last, caseSensitive);
    } else {
        product.Found = modStringTools::MatchPattern(text, start, pattern, product.First, product.Last, caseSensitive);
        literal.Found = MatchPattern(text, start, pattern, literal.First, literal.Last, caseSensitive);
    }
    if (product == literal)
        return {};
    return Shown(pattern) + " in " + Shown(text) + " from " + std::to_string(start) +
           (caseSensitive ? ", cases apart: " : ", any case: ") + Told(product) + "; literally " + Told(literal);
}

/// Returns the first place of `text` for which `places` and a literal search that starts after it differ.
std::string RestDifference(const Text& text, const Text& rest, const modStringTools::PlaceBits* places) {
    for (std::size_t left = text.size(); left > 0; --left) {
        std::int32_t first = 0;
        std::int32_t last = 0;
        const std::size_t place = text.size() - left + 1;
        const bool found = MatchPattern(text, static_cast<std::int32_t>(place + 1), rest, first, last, true);
        if (found != modStringTools::Has(places, left))
            return ": the rest " + Shown(rest) + " behind place " + std::to_string(place) +
                   (found ? " is missed" : " is not there");
    }
    return {};
}

} // namespace

std::string CompareMatch(Choices& choices) {
    const Case made = ShortCase(choices);
    return Compare(choices, made.Searched, WithFewRepetitions(made.Pattern, 6));
}

std::string CompareLongMatch(Choices& choices) {
    const std::uint32_t repetitions = choices.OneIn(16) ? 2 : 1;
    const Text text = Runs(choices, choices.OneIn(2) ? u"aaab1 K" : u"ab", choices.Below(repetitions == 1 ? 150 : 80));
    const Text front = choices.OneIn(4) ? Text(choices.Of(Fronts)) : Text();
    const Text end = choices.OneIn(6) ? Text(choices.Of(Ends)) : Text();
    return Compare(choices, text, WithFewRepetitions(front + RepeatedElements(choices, 5, 3) + end, repetitions));
}

std::string CompareRests(Choices& choices) {
    const TextView alphabet = choices.OneIn(2) ? u"aab1$" : u"ab";
    // A long text has more places than one word of bits, so that a carry goes to the next word.
    const bool isLong = choices.OneIn(256);
    const Text text = (isLong ? Runs(choices, alphabet, 60 + choices.Below(25)) : Drawn(choices, alphabet, 11)) + u"a";
    const Text pattern = WithFewRepetitions(u"." + RowsOfRepetitions(choices, 5) + u"a", isLong ? 3 : 6);
    const Text dollars(choices.Below(5), u'$');
    const bool toTheEnd = !dollars.empty();
    const Text body = toTheEnd ? pattern + dollars.substr(1) : pattern;
    modStringTools::PatternReading reading(true);
    modStringTools::ReadPattern(reading, text, 1, body, false, toTheEnd);
    const modStringTools::PlaceBits* places = reading.Rests;
    for (std::size_t i = 0; i < body.size(); ++i) {
        if (body[i] == u'\\')
            ++i;
        else if (body[i] == u'+') {
            const std::string difference = RestDifference(text, body.substr(i + 1), places);
            if (!difference.empty())
                return Shown(body) + (toTheEnd ? ", tied to the end, in " : " in ") + Shown(text) + difference;
            places += reading.Words;
        }
    }
    return {};
}

std::string CompareOwnPattern(Choices& choices) {
    const Text text = Joined(choices, OwnPieces, 6);
    return Compare(choices, text, Text(choices.Of(OwnPatterns)));
}

std::string CompareReplacement(Choices& choices) {
    const Case made = ShortCase(choices);
    const Text pattern = WithFewRepetitions(made.Pattern, 3);
    const Text by = Drawn(choices, u"ab$", 3);
    const bool global = !choices.OneIn(4);
    const bool caseSensitive = choices.OneIn(4);
    Text product = made.Searched;
    Text literal = made.Searched;
    modStringTools::ReplacePattern(product, pattern, by, global, caseSensitive);
    ReplacePattern(literal, pattern, by, global, caseSensitive);
    if (product == literal)
        return {};
    return Shown(pattern) + " in " + Shown(made.Searched) + " by " + Shown(by) + (global ? ", each" : ", the first") +
           (caseSensitive ? ", cases apart: " : ", any case: ") + Shown(product) + "; literally " + Shown(literal);
}

} // namespace reference
