// SPDX-License-Identifier: MIT
// What instruments send that is no UTF-8.
#pragma once

#include "src/text/text.h"

namespace modStringTools {

/// The character that a byte is in Windows-1252. The five bytes that it leaves open (81, 8D, 8F, 90, 9D) are the
/// control characters of the same number.
char16_t FromWindows1252(char byte);

/// Reads the bytes that FromBytes has kept as they are, since they are no UTF-8, as Windows-1252. They are characters
/// then and turn into UTF-8 when they are written.
void ReadRawBytesAsWindows1252(Text& text);

} // namespace modStringTools
