// SPDX-License-Identifier: MIT
// The text that everything here is written in, and what the whole system needs of it.
#pragma once

#include <cstdint>
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
char16_t LowerChar(char16_t character);
char16_t UpperChar(char16_t character);

/// Whether a character may be the same as another one when case doesn't count. Never so for ASCII's digits, punctuation
/// and controls, which a search can take at their face value.
bool HasCases(char16_t character);

/// LowerChar and UpperChar for each character of a text. The length never changes.
Text LowerCase(TextView text);
Text UpperCase(TextView text);

/// Whether two texts are the same when both are lower-cased.
bool SameIgnoringCase(TextView a, TextView b);

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

} // namespace modStringTools
