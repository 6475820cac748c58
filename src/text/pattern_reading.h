// SPDX-License-Identifier: MIT
// Matching of a pattern that is more than plain text: the pattern is evaluated from its end to its beginning, against
// all places of the text at once. For patterns.cpp and the tests only.
#pragma once

#include "src/text/pattern_state.h"

namespace modStringTools {

/// Reads `pattern`, without its anchors and not empty, against `text` from position `from` on. With `onlyThere` a match
/// must begin at `from`; with `toTheEnd` it must end at the end of the text.
/// For each element of the pattern the number of steps is that of the text's words of 64 places, whatever the contents;
/// for a `+` of a `+` in a pattern that ends in "$$" it is the number of places.
void ReadPattern(PatternReading& reading, TextView text, std::int32_t from, TextView pattern, bool onlyThere,
                 bool toTheEnd);

/// Returns the position of the first match from position `from` on, and sets `last` to its last position. Both are 0 if
/// there is no match.
std::int32_t FirstMatch(const PatternReading& reading, std::int32_t from, std::int32_t& last);

} // namespace modStringTools
