// SPDX-License-Identifier: MIT
// The system's own small pattern matcher. It is no regular-expression engine: instruments' records are found and taken
// apart by its very dialect, odd results included (pattern_reading.cpp tells them).
#pragma once

#include "src/text/text.h"

namespace modStringTools {

/// Whether there is anything in a pattern that does not stand for itself. One without is found as it is written.
bool HasSpecial(TextView pattern);

/// Looks for `pattern` in `text` from position `start` (1-based; below 1 means 1) on. On a match `first` and `last` are
/// its positions, both inclusive, and the result is true; without one they are 0. With a start behind the text's end or
/// an empty pattern the result is false and both keep what the caller had in them.
bool MatchPattern(TextView text, std::int32_t start, TextView pattern, std::int32_t& first, std::int32_t& last,
                  bool caseSensitive);

/// Whether the pattern is found anywhere in the text. `unused` is accepted for the sake of its callers' habit.
bool HasPattern(TextView text, TextView pattern, bool unused, bool caseSensitive);

/// MatchPattern, giving `first` as its result; that is the caller's old value where MatchPattern leaves it untouched.
std::int32_t FindPattern(const std::int32_t& start, TextView text, TextView pattern, std::int32_t& first,
                         std::int32_t& last, bool caseSensitive);

/// Replaces the first match, or with `global` each one; a replacement is never scanned again.
void ReplacePattern(Text& text, TextView pattern, TextView replacement, bool global, bool caseSensitive);

} // namespace modStringTools
