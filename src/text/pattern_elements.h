// SPDX-License-Identifier: MIT
// The elements of a pattern. For the files of the matcher and the tests only.
#pragma once

#include "src/text/text.h"

#include <array>
#include <unordered_map>

namespace modStringTools {

/// An element of a pattern, as a number; equal elements have the same number. A `+` is not an element: among the
/// elements it is -1 for the first `+` of its pattern, -2 for the second, and so on.
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
constexpr Element FirstSingle = 9; ///< this number and all above it are single characters

inline bool IsRepeat(Element element) {
    return element < 0;
}

/// The elements read so far. No character is matched by two different elements that are single characters.
struct Vocabulary {
    bool CaseSensitive = false;
    std::array<bool, FirstSingle> Classes{};        ///< which elements below FirstSingle occur
    Element Next = FirstSingle;                     ///< the number of the next new element
    std::array<Element, 0x80> Ascii{};              ///< by the text's character; NoElement for most
    std::unordered_map<char16_t, Element> Others{}; ///< beyond ASCII; by the lower-cased character if case is ignored
};

/// Reads a pattern without anchors into `elements`. Returns their number. REQUIRES: `elements` can hold one element for
/// each character of the pattern.
std::size_t ReadElements(TextView pattern, Vocabulary& vocabulary, Element* elements);

Element SingleBeyondAscii(const Vocabulary& vocabulary, char16_t character);

/// Returns the element for a single character that matches this one, or NoElement.
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
