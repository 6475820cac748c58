// SPDX-License-Identifier: MIT
// The literal range operations and token reader, step by step. Only tests and fuzz targets use them.
#pragma once

#include "src/text/text.h"

namespace reference {

/// Returns at most `count` characters from position `from` (1 or above) on; empty after the text's end.
Text TextFrom(const Text& text, std::int32_t from, std::int32_t count);

/// The arguments and results are those of modStringTools' routines of the same names.
void RemoveRange(Text& text, std::int32_t& first, std::int32_t& last);
void ReplaceRange(Text& text, const Text& replacement, std::int32_t& first, std::int32_t& last);
void InsertText(Text& text, const Text& inserted, std::int32_t& position);
Text TextRange(const Text& text, std::int32_t first, std::int32_t last);
std::int32_t GetToken(const Text& text, const Text& delimiter, std::int32_t index, Text& token);

} // namespace reference
