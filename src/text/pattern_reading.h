// SPDX-License-Identifier: MIT
// What the pattern matcher does with a pattern that is more than plain text: it reads the pattern from its end towards
// its beginning, against all places of the text at once. Nothing but patterns.cpp and the tests need this.
#pragma once

#include "src/text/pattern_state.h"

namespace modStringTools {

/// Reads `pattern`, without its anchors and not empty, against `text` from position `from` on. With `onlyThere` no
/// match is wanted that begins behind `from`; with `toTheEnd` none that doesn't end with the text.
/// Takes as many steps as the text has words of places for each element of the pattern, whatever the two hold; but as
/// many as it has places for a `+` of a `+` in a pattern that ends in "$$".
void ReadPattern(PatternReading& reading, TextView text, std::int32_t from, TextView pattern, bool onlyThere,
                 bool toTheEnd);

/// The position of the first match from position `from` on, and its last position; 0 and 0 for none.
std::int32_t FirstMatch(const PatternReading& reading, std::int32_t from, std::int32_t& last);

} // namespace modStringTools
