// SPDX-License-Identifier: MIT
#include "src/text/pattern_elements.h"

namespace modStringTools {

namespace {

char16_t Folded(const Vocabulary& vocabulary, char16_t character) {
    return vocabulary.CaseSensitive ? character : LowerChar(character);
}

// An escaped character is compared exactly and a plain one may be compared in any case, yet both use the same number:
// the characters that can be escaped have no cases, and no other character lower-cases to one of them.
Element SingleElement(Vocabulary& vocabulary, char16_t character) {
    const char16_t folded = Folded(vocabulary, character);
    Element& element = folded < FirstBeyondAscii ? vocabulary.Ascii[folded] : vocabulary.Others[folded];
    if (element == NoElement)
        element = vocabulary.Next++;
    if (!vocabulary.CaseSensitive && folded < FirstBeyondAscii)
        vocabulary.Ascii[UpperChar(folded)] = element;
    return element;
}

Element EscapedElement(Vocabulary& vocabulary, char16_t letter) {
    switch (letter) {
    case u's':
        return Blank;
    case u'S':
        return NoBlank;
    case u'w':
        return WordCharacter;
    case u'W':
        return NoWordCharacter;
    case u'd':
        return Digit;
    case u'D':
        return NoDigit;
    case u'\\':
    case u'+':
    case u'$':
    case u'^':
    case u'.':
    case u'/':
        return SingleElement(vocabulary, letter);
    default:
        return Nothing;
    }
}

Element PlainElement(Vocabulary& vocabulary, char16_t character) {
    switch (character) {
    case u'.':
        return AnyCharacter;
    case u'^':
    case u'$':
        return Nothing;
    default:
        return SingleElement(vocabulary, character);
    }
}

} // namespace

std::size_t ReadElements(TextView pattern, Vocabulary& vocabulary, Element* elements) {
    std::size_t count = 0;
    Element repeats = 0;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        Element element = NoElement;
        if (pattern[i] == u'\\' && i + 1 < pattern.size())
            element = EscapedElement(vocabulary, pattern[++i]);
        else if (pattern[i] == u'+')
            element = --repeats;
        else
            element = PlainElement(vocabulary, pattern[i]);
        if (!IsRepeat(element) && element < FirstSingle)
            vocabulary.Classes[static_cast<std::size_t>(element)] = true;
        elements[count++] = element;
    }
    return count;
}

Element SingleBeyondAscii(const Vocabulary& vocabulary, char16_t character) {
    const char16_t folded = Folded(vocabulary, character);
    if (folded < FirstBeyondAscii)
        return vocabulary.Ascii[folded];
    const auto found = vocabulary.Others.find(folded);
    return found != vocabulary.Others.end() ? found->second : NoElement;
}

bool Matches(const Vocabulary& vocabulary, Element element, char16_t character) {
    switch (element) {
    case Nothing:
        return false;
    case AnyCharacter:
        return true;
    case Blank:
        return IsBlank(character);
    case NoBlank:
        return !IsBlank(character);
    case WordCharacter:
        return IsWord(character);
    case NoWordCharacter:
        return !IsWord(character);
    case Digit:
        return IsDigit(character);
    case NoDigit:
        return !IsDigit(character);
    default:
        return element == SingleFor(vocabulary, character);
    }
}

} // namespace modStringTools
