// SPDX-License-Identifier: MIT
// Characters of UTF-8, one by one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace modStringTools {

struct Utf8Character {
    std::size_t Length = 0; ///< in bytes; 0 if the bytes are no UTF-8
    char32_t Code = 0;
};

/// What stands for a byte that is no UTF-8, where such bytes can't be kept: U+FFFD.
inline constexpr std::string_view ReplacementCharacter = "\xEF\xBF\xBD";

/// Returns the character that bytes begin with. No UTF-8 is one that is cut off or written longer than needed, a
/// surrogate, and what is beyond U+10FFFF. REQUIRES: there is a byte.
Utf8Character FirstCharacter(std::string_view bytes);

bool IsUtf8(std::string_view bytes);

void AppendUtf8(std::string& bytes, char32_t code);

} // namespace modStringTools
