// SPDX-License-Identifier: MIT
// Texts of a table as a person can read them, and how wide they are.
#pragma once

#include <string>
#include <string_view>

namespace plotting {

/// Takes the first character of UTF-8 off a text that is not empty. Bytes that are no UTF-8 are U+FFFD, one by one.
char32_t TakeCharacter(std::string_view& rest);

/// Returns a text with U+FFFD for each byte that is no UTF-8 and each character that a file of XML or a terminal must
/// not get: control characters, and the two that are none.
std::string Readable(std::string_view bytes);

/// Returns the width of a text in cells of a terminal: 2 for a character of East Asia, 0 for an accent by itself.
int CellsOf(std::string_view text);
int CellsOf(char32_t character);

/// Returns the most that a text is wide in the usual fonts without serifs, in the unit of `size`, which is that of the
/// font. A text that is given this room fits.
double WidthOf(std::string_view text, double size);

} // namespace plotting
