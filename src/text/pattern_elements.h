// SPDX-License-Identifier: MIT
// The elements that a pattern is made of. Nothing but the matcher's own files and the tests need this.
#pragma once

#include "src/text/text.h"

#include <array>
#include <unordered_map>

namespace modStringTools {

/// An element of a pattern, by a number that equal elements have in common. A `+` is none, and stands between them as
/// -1 for the first one of its pattern, -2 for the second, and so on.
using Element = std::int32_t;

constexpr Element NoElement = 0;
constexpr Element Nothing = 1; ///< refuses every character
constexpr Element AnyCharacter = 2;
constexpr Element Blank = 3;
constexpr Element NoBlank = 4;
constexpr Element WordCharacter = 5;
constexpr Element NoWordCharacter = 6;
constexpr Element Digit = 7;
constexpr Element NoDigit = 8;
constexpr Element FirstSingle = 9; ///< this one and all above stand for a single character

inline bool IsRepeat(Element element) {
    return element < 0;
}

/// The elements that have been met with. No character is matched by two of those that stand for a single one.
struct Vocabulary {
    bool CaseSensitive = false;
    std::array<bool, FirstSingle> Classes{};        ///< which of those below FirstSingle
    Element Next = FirstSingle;                     ///< the number of the next new one
    std::array<Element, 0x80> Ascii{};              ///< by the text's character; NoElement for most
    std::unordered_map<char16_t, Element> Others{}; ///< beyond ASCII, by the lower-cased one where case doesn't count
};

/// Reads a pattern without anchors into `elements`, which has room for one a character, and gives their number.
std::size_t ReadElements(TextView pattern, Vocabulary& vocabulary, Element* elements);

Element SingleBeyondAscii(const Vocabulary& vocabulary, char16_t character);

/// The element for a single character that matches this one; NoElement for none.
inline Element SingleFor(const Vocabulary& vocabulary, char16_t character) {
    return character < vocabulary.Ascii.size() ? vocabulary.Ascii[character] : SingleBeyondAscii(vocabulary, character);
}

bool Matches(const Vocabulary& vocabulary, Element element, char16_t character);

inline bool IsBlank(char16_t character) {
    return character == u' ' || character == u'\t';
}

inline bool IsDigit(char16_t character) {
    return character >= u'0' && character <= u'9';
}

inline bool IsWord(char16_t character) {
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z') || IsDigit(character) ||
           character == u'_';
}

} // namespace modStringTools
