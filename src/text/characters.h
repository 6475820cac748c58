// SPDX-License-Identifier: MIT
// Characters of a text: one 16-bit unit each; two units, a high half and a low half, for characters above 0xFFFF.
#pragma once

#include <string>
#include <string_view>

namespace modStringTools {

inline constexpr char16_t CarriageReturn = u'\r';
inline constexpr char16_t LineFeed = u'\n';
inline constexpr char16_t Bar = u'|'; ///< between the fields of a row, and between the items of a list

constexpr bool IsHighHalf(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool IsLowHalf(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// True if two adjacent units are one character.
constexpr bool AreOneCharacter(char16_t first, char16_t second) {
    return IsHighHalf(first) && IsLowHalf(second);
}

/// A byte that is not UTF-8 is kept as the low half of this number and the byte: FirstRawByte to LastRawByte. Valid
/// UTF-8 never produces these.
inline constexpr char16_t RawByteBase = 0xDC00;
inline constexpr char16_t FirstRawByte = 0xDC80;
inline constexpr char16_t LastRawByte = 0xDCFF;

struct Character {
    char32_t Code = 0;
    std::size_t Length = 1; ///< in units
};

/// Returns the first character of a text, which must not be empty. A half without the other half is a character by
/// itself.
constexpr Character FirstCharacter(std::u16string_view text) {
    if (text.size() > 1 && AreOneCharacter(text[0], text[1]))
        return {0x10000U + ((text[0] - 0xD800U) << 10U) + (text[1] - 0xDC00U), 2};
    return {text[0], 1};
}

/// Appends a character to a text.
inline void AppendCharacter(std::u16string& text, char32_t code) {
    if (code < 0x10000) {
        text += static_cast<char16_t>(code);
        return;
    }
    code -= 0x10000;
    text += static_cast<char16_t>(0xD800U + (code >> 10U));
    text += static_cast<char16_t>(0xDC00U + (code & 0x3FFU));
}

} // namespace modStringTools
