// SPDX-License-Identifier: MIT
// The literal pattern matcher, step by step and slow. Only tests and fuzz targets use it, to compare the product's with
// it. It is correct because it is simple, so it has no shortcuts.
#pragma once

#include "src/text/text.h"

namespace reference {

/// The arguments and results are those of modStringTools' routines of the same names.
bool MatchPattern(const Text& text, std::int32_t start, Text pattern, std::int32_t& first, std::int32_t& last,
                  bool caseSensitive);

bool HasPattern(const Text& text, const Text& pattern, bool unused, bool caseSensitive);

std::int32_t FindPattern(const std::int32_t& start, const Text& text, const Text& pattern, std::int32_t& first,
                         std::int32_t& last, bool caseSensitive);

void ReplacePattern(Text& text, const Text& pattern, const Text& replacement, bool global, bool caseSensitive);

} // namespace reference
