// SPDX-License-Identifier: MIT
// Text from instruments that is not UTF-8.
#pragma once

#include "src/text/text.h"

namespace modStringTools {

/// Returns the character of a byte in Windows-1252. The five bytes that it leaves undefined (hexadecimal 81, 8D, 8F,
/// 90, 9D) become the control characters of the same number.
char16_t FromWindows1252(char byte);

/// Converts the bytes that FromBytes has kept because they are not UTF-8 from Windows-1252 to characters. They are
/// written as UTF-8 from then on.
void ReadRawBytesAsWindows1252(Text& text);

} // namespace modStringTools
