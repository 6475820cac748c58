// SPDX-License-Identifier: MIT
#include "tests/reference/patterns_reference.h"

#include "tests/reference/ranges_reference.h"

namespace reference {

namespace {

bool IsDigit(char16_t character) {
    return character >= u'0' && character <= u'9';
}

bool IsWord(char16_t character) {
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z') || IsDigit(character) ||
           character == u'_';
}

bool IsBlank(char16_t character) {
    return character == u' ' || character == u'\t';
}

bool IsEscapedLiteral(const Text& element) {
    return element == u"\\\\" || element == u"\\+" || element == u"\\$" || element == u"\\^" || element == u"\\." ||
           element == u"\\/";
}

/// An element of one character.
bool SingleHits(char16_t element, char16_t character, bool caseSensitive) {
    if (element == u'^' || element == u'$')
        return false;
    if (element == u'.')
        return true;
    if (caseSensitive)
        return element == character;
    return modStringTools::LowerChar(element) == modStringTools::LowerChar(character);
}

/// `element` holds no character, one, or a backslash and one.
bool ElementHits(const Text& element, char16_t character, bool caseSensitive) {
    if (element.size() < 2)
        return !element.empty() && SingleHits(element.front(), character, caseSensitive);
    if (element == u"\\s")
        return IsBlank(character);
    if (element == u"\\S")
        return !IsBlank(character);
    if (element == u"\\w")
        return IsWord(character);
    if (element == u"\\W")
        return !IsWord(character);
    if (element == u"\\d")
        return IsDigit(character);
    if (element == u"\\D")
        return !IsDigit(character);
    return IsEscapedLiteral(element) && element[1] == character;
}

} // namespace

bool MatchPattern(const Text& text, std::int32_t start, Text pattern, std::int32_t& first, std::int32_t& last,
                  bool caseSensitive) {
    const auto textLength = static_cast<std::int32_t>(text.size());
    if (start < 1)
        start = 1;
    if (start > textLength || pattern.empty())
        return false;
    first = 0;
    last = 0;
    std::int32_t patternPos = 1;
    std::int32_t textPos = start;
    bool startAnchored = false;
    bool endAnchored = false;
    if (pattern.front() == u'^') {
        startAnchored = true;
        pattern.erase(0, 1);
    }
    if (!pattern.empty() && pattern.back() == u'$') {
        endAnchored = true;
        pattern.pop_back();
    }
    const auto patternLength = static_cast<std::int32_t>(pattern.size());
    Text patternChar;
    Text previousElement;
    bool hit = false;
    for (;;) {
        if (textPos > textLength)
            break;
        hit = false;
        patternChar = TextFrom(pattern, patternPos, 1);
        if (patternChar != u"+")
            previousElement = TextFrom(pattern, patternPos, patternChar == u"\\" ? 2 : 1);
        const Text element = previousElement;
        hit = ElementHits(element, text[static_cast<std::size_t>(textPos - 1)], caseSensitive);
        if (patternChar == u"+" && hit && patternPos < patternLength) {
            const Text rest = TextFrom(pattern, patternPos + 1, patternLength);
            std::int32_t restFirst = 0;
            std::int32_t restLast = 0;
            if (!MatchPattern(text, textPos + 1, rest, restFirst, restLast, caseSensitive))
                hit = false;
        }
        if (hit) {
            if (first == 0)
                first = textPos;
            last = textPos;
            if (patternChar != u"+")
                patternPos += static_cast<std::int32_t>(element.size());
        } else if (patternChar == u"+") {
            patternPos += 1;
            textPos -= 1;
        } else if (first > 0) {
            textPos = first;
            patternPos = 1;
            first = 0;
            last = 0;
        }
        if (endAnchored && last > 0 && patternPos > patternLength && last < textLength) {
            patternPos = 1;
            textPos = first;
            first = 0;
            last = 0;
        }
        if (patternPos > patternLength)
            break;
        textPos += 1;
    }
    if (patternPos <= patternLength) {
        const bool finalRepetition = patternPos == patternLength && patternChar == u"+";
        const bool onRepetition = TextFrom(pattern, patternPos, 1) == u"+" && hit;
        if (!finalRepetition && !onRepetition) {
            first = 0;
            last = 0;
        }
    }
    if (startAnchored && first != 1) {
        first = 0;
        last = 0;
    }
    if (endAnchored && last != textLength) {
        first = 0;
        last = 0;
    }
    return first >= 1 && last >= 1;
}

bool HasPattern(const Text& text, const Text& pattern, bool, bool caseSensitive) {
    std::int32_t first = 0;
    std::int32_t last = 0;
    return MatchPattern(text, 0, pattern, first, last, caseSensitive);
}

std::int32_t FindPattern(const std::int32_t& start, const Text& text, const Text& pattern, std::int32_t& first,
                         std::int32_t& last, bool caseSensitive) {
    MatchPattern(text, start, pattern, first, last, caseSensitive);
    return first;
}

void ReplacePattern(Text& text, const Text& pattern, const Text& replacement, bool global, bool caseSensitive) {
    std::int32_t first = 0;
    std::int32_t last = 0;
    bool found = MatchPattern(text, 0, pattern, first, last, caseSensitive);
    while (found) {
        const auto lengthBefore = static_cast<std::int32_t>(text.size());
        ReplaceRange(text, replacement, first, last);
        if (!global)
            return;
        const std::int32_t change = static_cast<std::int32_t>(text.size()) - lengthBefore;
        found = MatchPattern(text, last + 1 + change, pattern, first, last, caseSensitive);
    }
}

} // namespace reference
