// SPDX-License-Identifier: MIT
// The text type of the program and its basic operations.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A sequence of 16-bit characters (UTF-16 code units). Positions in arguments and results are 1-based and inclusive;
/// position 0 means "none".
using Text = std::u16string;
using TextView = std::u16string_view;

namespace modStringTools {

/// Returns a character in lower or upper case by Unicode's simple mapping, one character to one, in any locale. A
/// character without such a mapping, or half of a surrogate pair, is returned unchanged.
inline char16_t LowerChar(char16_t character);
char16_t UpperChar(char16_t character);

/// True if a character may equal another one when case is ignored. False for ASCII digits, punctuation and control
/// characters, which a search can compare directly. True for every character beyond ASCII.
bool HasCases(char16_t character);

/// Applies LowerChar or UpperChar to each character. The length never changes.
Text LowerCase(TextView text);
Text UpperCase(TextView text);

/// True if two texts are equal when both are lower-cased.
bool SameIgnoringCase(TextView a, TextView b);

/// Returns the offset of the first such character at or after the offset `from`, or TextView::npos. Both count from 0.
/// It searches bytes with memchr. From the first character on that has the wanted low byte and is another one, as
/// beyond Latin-1, it is as slow as a loop.
inline std::size_t FindChar(TextView text, char16_t character, std::size_t from = 0);

/// Returns a number in decimal, with a leading "-" if it is negative.
Text NumberText(std::int64_t number);

/// Returns the number of a decimal text. Blanks around it and one sign are allowed. Returns no value for an empty text,
/// for any other character, and for a value outside 32 bits.
std::optional<std::int32_t> NumberFromText(TextView text);

/// Convert a text to UTF-8 bytes, and back. Bytes that are not UTF-8 become the characters 0xDC80 to 0xDCFF, one for
/// each byte, and are converted back to the same bytes, so that any bytes survive both conversions.
std::string ToBytes(TextView text);
Text FromBytes(std::string_view bytes);
/// Appends the result of FromBytes to a text, whose capacity is used.
void AppendBytes(Text& text, std::string_view bytes);

// --- defined here so that they are inlined

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
    // The byte may be half of another character. A text with one such character probably has many.
    return text[at] == character ? at : text.find(character, at);
}

/// Replaces each NUL with a blank. Called wherever text is read: other tools treat a file with a NUL as binary data,
/// and some end the line there.
void BlankNuls(Text& text);

} // namespace modStringTools
