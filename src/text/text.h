// SPDX-License-Identifier: MIT
// The text that everything here is written in, and what the whole system needs of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A sequence of 16-bit characters (UTF-16 code units). Positions in it are 1-based and inclusive wherever a routine
/// takes or gives one; position 0 means "none".
using Text = std::u16string;
using TextView = std::u16string_view;

namespace modStringTools {

/// One character in lower or upper case by Unicode's simple mapping, one character to one, whatever the locale.
/// A character without such a mapping, and half of a surrogate pair, comes back as it is.
inline char16_t LowerChar(char16_t character);
char16_t UpperChar(char16_t character);

/// Whether a character may be the same as another one when case doesn't count. Never so for ASCII's digits, punctuation
/// and controls, which a search can take at their face value.
bool HasCases(char16_t character);

/// LowerChar and UpperChar for each character of a text. The length never changes.
Text LowerCase(TextView text);
Text UpperCase(TextView text);

/// Whether two texts are the same when both are lower-cased.
bool SameIgnoringCase(TextView a, TextView b);

/// Where a character stands first in a text, at `from` or behind it; TextView::npos where it doesn't. Both are offsets,
/// from 0. As fast as the processor can look at bytes, but for a text with characters beyond Latin-1 that have the
/// wanted one's byte in them: from the first such one on, it is as slow as a loop.
inline std::size_t FindChar(TextView text, char16_t character, std::size_t from = 0);

/// The decimal text of a number, with "-" in front of a negative one.
Text NumberText(std::int64_t number);

/// The number that a decimal text stands for: blanks around it and one sign are allowed, nothing else is.
/// Nothing for an empty text, for any other character, and for a value outside 32 bits.
std::optional<std::int32_t> NumberFromText(TextView text);

/// A text as UTF-8 bytes, and back. Bytes that are no UTF-8 become the characters 0xDC80 to 0xDCFF, one for each byte,
/// and turn into the same bytes again, so that any bytes survive the way there and back.
std::string ToBytes(TextView text);
Text FromBytes(std::string_view bytes);
/// Puts what FromBytes gives behind a text, which may have room for it already.
void AppendBytes(Text& text, std::string_view bytes);

// --- what is too short to be called

inline constexpr char16_t FirstBeyondAscii = 0x80;
char16_t LowerCharBeyondAscii(char16_t character);

inline char16_t LowerChar(char16_t character) {
    if (character >= FirstBeyondAscii)
        return LowerCharBeyondAscii(character);
    return character >= u'A' && character <= u'Z' ? static_cast<char16_t>(character + 0x20) : character;
}

inline std::size_t FindChar(TextView text, char16_t character, std::size_t from) {
    if (from >= text.size())
        return TextView::npos;
    const char16_t* const first = text.data() + from;
    const void* const hit = std::memchr(first, character & 0xFF, (text.size() - from) * sizeof(char16_t));
    if (hit == nullptr)
        return TextView::npos;
    const std::ptrdiff_t bytes = static_cast<const char*>(hit) - reinterpret_cast<const char*>(first);
    const std::size_t at = from + static_cast<std::size_t>(bytes) / sizeof(char16_t);
    // The byte may be half of another character. A text with one of these is likely to be full of them.
    return text[at] == character ? at : text.find(character, at);
}

/// Puts a blank in the place of each NUL. It is called wherever text comes in: a file with a NUL is "data" for other
/// tools, and for some of them the line ends there.
void BlankNuls(Text& text);

} // namespace modStringTools
