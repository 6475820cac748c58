// SPDX-License-Identifier: MIT
// The characters of a text that may be no UTF-8: the fields of a table are bytes.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace exporting {

/// What stands for a byte that is no UTF-8: U+FFFD.
inline constexpr std::string_view Replacement = "\xEF\xBF\xBD";

/// Returns the length in bytes of the character that begins at `at`, from 1 to 4. Nothing if the bytes there are no
/// UTF-8: cut off, a form that is longer than needed, a surrogate, or beyond U+10FFFF. REQUIRES: at < text.size().
std::optional<std::size_t> CharacterAt(std::string_view text, std::size_t at);

bool IsUtf8(std::string_view text);

} // namespace exporting
