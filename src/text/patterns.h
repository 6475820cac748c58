// SPDX-License-Identifier: MIT
// The system's own small pattern matcher. It is no regular-expression engine: drivers and the decoding of readings
// depend on its dialect, odd results included (listed in pattern_reading.cpp).
#pragma once

#include "src/text/text.h"

namespace modStringTools {

/// True if a pattern has a special character. A pattern without one is searched for as plain text.
bool HasSpecial(TextView pattern);

/// Searches `text` for `pattern` from position `start` on (1-based; below 1 means 1). On a match returns true and sets
/// `first` and `last` to its positions, both inclusive. Without a match returns false and sets both to 0. If the start
/// is after the end of the text, or the pattern is empty, returns false and leaves both as they were.
bool MatchPattern(TextView text, std::int32_t start, TextView pattern, std::int32_t& first, std::int32_t& last,
                  bool caseSensitive);

/// True if the pattern is found anywhere in the text. `unused` is ignored; callers pass it out of habit.
bool HasPattern(TextView text, TextView pattern, bool unused, bool caseSensitive);

/// Calls MatchPattern and returns `first`, which is the caller's old value where MatchPattern leaves it as it was.
std::int32_t FindPattern(const std::int32_t& start, TextView text, TextView pattern, std::int32_t& first,
                         std::int32_t& last, bool caseSensitive);

/// Replaces the first match, or with `global` every match. Replacements are not searched again.
void ReplacePattern(Text& text, TextView pattern, TextView replacement, bool global, bool caseSensitive);

} // namespace modStringTools
