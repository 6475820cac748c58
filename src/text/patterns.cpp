// SPDX-License-Identifier: MIT
#include "text/patterns.h"

#include "text/ranges.h"

#include <algorithm>

// The grammar. A pattern is a sequence of elements, each of which matches one character:
//
//  1. `.`              any character, carriage return and line feed included
//  2. `\s` `\S`        a blank or a tab; anything else. A carriage return is no white space
//  3. `\w` `\W`        a letter a to z or A to Z, a digit or `_`; anything else
//  4. `\d` `\D`        a digit; anything else
//  5. `\\ \+ \$ \^ \. \/`   the second character, exactly, whatever the case flag says
//  6. `\` and any other character   nothing: "\q" refuses "q"
//  7. `^` and `$`      nothing, but at the pattern's ends (9)
//  8. anything else    itself; without the case flag in any case: "[", "(", "|", "*", "?" are plain characters
//
// and around them:
//
//  9. `^` as the first and `$` as the last character of the pattern tie the match to the text's beginning and end. The
//  `$`
//     is taken off whatever stands in front of it: "a\$" wants a backslash at the end, and accepts "a\".
// 10. `+` behind an element repeats it, once or more, as long as what follows the `+` can still be found somewhere
//     further on: "a.+X" takes "aXbX" of "aXbXc". A `+` at the very front is stepped over.
// 11. When the text ends while the pattern stands on a `+`, the match holds although nothing behind the `+` was
// compared:
//     "=.+|" accepts "A=1" (positions 2 to 3) and refuses "A=12". Quoted values rest on that.

namespace modStringTools {

namespace {

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

bool IsSpecial(char16_t character) {
    return TextView(u".\\+^$").find(character) != TextView::npos;
}

bool SameChar(char16_t a, char16_t b, bool caseSensitive) {
    return a == b || (!caseSensitive && LowerChar(a) == LowerChar(b));
}

bool EscapeMatches(char16_t letter, char16_t character) {
    switch (letter) {
    case u's':
        return IsBlank(character);
    case u'S':
        return !IsBlank(character);
    case u'w':
        return IsWord(character);
    case u'W':
        return !IsWord(character);
    case u'd':
        return IsDigit(character);
    case u'D':
        return !IsDigit(character);
    case u'\\':
    case u'+':
    case u'$':
    case u'^':
    case u'.':
    case u'/':
        return character == letter;
    default:
        return false;
    }
}

bool ElementMatches(TextView element, char16_t character, bool caseSensitive) {
    if (element.empty() || element == u"^" || element == u"$")
        return false;
    if (element == u".")
        return true;
    if (element.size() == 2)
        return EscapeMatches(element[1], character);
    return SameChar(element[0], character, caseSensitive);
}

/// The last place of a plain text in another one, from 1; 0 for none.
std::int32_t LastPlaceOf(TextView wanted, TextView text, bool caseSensitive) {
    for (std::size_t place = text.size() + 1 - std::min(wanted.size(), text.size() + 1); place > 0; --place) {
        std::size_t i = 0;
        while (i < wanted.size() && SameChar(wanted[i], text[place - 1 + i], caseSensitive))
            ++i;
        if (i == wanted.size())
            return static_cast<std::int32_t>(place);
    }
    return 0;
}

bool IsPlain(TextView pattern) {
    for (const char16_t character : pattern) {
        if (IsSpecial(character))
            return false;
    }
    return true;
}

/// One run of the matcher. Positions count from 1.
class Matcher {
public:
    Matcher(TextView text, std::int32_t start, TextView pattern, bool caseSensitive)
        : Text_(text), Pattern(pattern), CaseSensitive(caseSensitive), TextPlace(start) {
        if (Pattern.front() == u'^') {
            StartAnchored = true;
            Pattern.remove_prefix(1);
        }
        if (!Pattern.empty() && Pattern.back() == u'$') {
            EndAnchored = true;
            Pattern.remove_suffix(1);
        }
    }

    void Run() {
        while (TextPlace <= TextLength() && !HopelessAnchor()) {
            Step();
            if (PatternPlace > PatternLength())
                break;
            ++TextPlace;
        }
        const bool usedUp = PatternPlace > PatternLength();
        if ((!usedUp && !HoldsAtTextEnd()) || (StartAnchored && First != 1) || (EndAnchored && Last != TextLength()))
            Forget();
    }

    std::int32_t First = 0;
    std::int32_t Last = 0;

private:
    std::int32_t TextLength() const { return static_cast<std::int32_t>(Text_.size()); }
    std::int32_t PatternLength() const { return static_cast<std::int32_t>(Pattern.size()); }

    void Forget() {
        First = 0;
        Last = 0;
    }

    /// Gives the match up that was begun, and goes on behind its first character.
    void StartAgain() {
        TextPlace = First;
        PatternPlace = 1;
        Forget();
    }

    /// A match that must begin at the text's first character can't any more.
    bool HopelessAnchor() const { return StartAnchored && First == 0 && TextPlace > 1; }

    TextView ElementHere() const {
        const auto place = static_cast<std::size_t>(PatternPlace) - 1;
        return Pattern.substr(place, Pattern[place] == u'\\' ? 2 : 1);
    }

    void Step() {
        const bool repeats =
            PatternPlace <= PatternLength() && Pattern[static_cast<std::size_t>(PatternPlace) - 1] == u'+';
        OnRepeat = repeats;
        if (!repeats)
            Element = PatternPlace <= PatternLength() ? ElementHere() : TextView();
        Hit = ElementMatches(Element, Text_[static_cast<std::size_t>(TextPlace) - 1], CaseSensitive);
        if (repeats && Hit && PatternPlace < PatternLength())
            Hit = RestIsFurtherOn();
        if (Hit)
            Take(repeats);
        else if (repeats)
            GiveToNextElement();
        else if (First > 0)
            StartAgain();
        if (EndAnchored && Last > 0 && PatternPlace > PatternLength() && Last < TextLength())
            StartAgain(); // used up too early: "ab$" drops the first "ab" of "abab"
    }

    void Take(bool repeats) {
        if (First == 0)
            First = TextPlace;
        Last = TextPlace;
        if (!repeats) // on a `+` the next character is offered to the same element
            PatternPlace += static_cast<std::int32_t>(Element.size());
    }

    void GiveToNextElement() {
        ++PatternPlace;
        --TextPlace;
    }

    /// Whether what follows the `+` is found anywhere behind this character.
    bool RestIsFurtherOn() {
        const TextView rest = Pattern.substr(static_cast<std::size_t>(PatternPlace));
        if (!IsPlain(rest)) {
            std::int32_t first = 0;
            std::int32_t last = 0;
            return MatchPattern(Text_, TextPlace + 1, rest, first, last, CaseSensitive);
        }
        if (LastRestAt != PatternPlace) {
            LastRest = LastPlaceOf(rest, Text_, CaseSensitive);
            LastRestAt = PatternPlace;
        }
        return LastRest > TextPlace;
    }

    /// What becomes of a match when the text ends before the pattern does.
    bool HoldsAtTextEnd() const {
        if (PatternPlace == PatternLength() && OnRepeat)
            return true; // a final `+` needs no more text
        return Pattern[static_cast<std::size_t>(PatternPlace) - 1] == u'+' && Hit;
    }

    TextView Text_;
    TextView Pattern;
    bool CaseSensitive;
    bool StartAnchored = false;
    bool EndAnchored = false;
    std::int32_t TextPlace;
    std::int32_t PatternPlace = 1;
    TextView Element;      ///< read last; a `+` repeats it
    bool OnRepeat = false; ///< the pattern stood on a `+` at the last step
    bool Hit = false;
    std::int32_t LastRest = 0;   ///< last place of a plain rest in the text
    std::int32_t LastRestAt = 0; ///< the `+` that it follows; 0 for not looked for yet
};

} // namespace

bool MatchPattern(TextView text, std::int32_t start, TextView pattern, std::int32_t& first, std::int32_t& last,
                  bool caseSensitive) {
    start = std::max(start, 1);
    if (start > static_cast<std::int32_t>(text.size()) || pattern.empty())
        return false;
    Matcher matcher(text, start, pattern, caseSensitive);
    matcher.Run();
    first = matcher.First;
    last = matcher.Last;
    return first >= 1 && last >= 1;
}

bool HasPattern(TextView text, TextView pattern, bool, bool caseSensitive) {
    std::int32_t first = 0;
    std::int32_t last = 0;
    return MatchPattern(text, 0, pattern, first, last, caseSensitive);
}

std::int32_t FindPattern(const std::int32_t& start, TextView text, TextView pattern, std::int32_t& first,
                         std::int32_t& last, bool caseSensitive) {
    MatchPattern(text, start, pattern, first, last, caseSensitive);
    return first;
}

void ReplacePattern(Text& text, TextView pattern, TextView replacement, bool global, bool caseSensitive) {
    std::int32_t first = 0;
    std::int32_t last = 0;
    bool found = MatchPattern(text, 0, pattern, first, last, caseSensitive);
    while (found) {
        const auto before = static_cast<std::int32_t>(text.size());
        ReplaceRange(text, replacement, first, last);
        if (!global)
            return;
        const std::int32_t behind = last + 1 + static_cast<std::int32_t>(text.size()) - before;
        found = MatchPattern(text, behind, pattern, first, last, caseSensitive);
    }
}

} // namespace modStringTools
