// SPDX-License-Identifier: MIT
// What the pattern matcher does with a pattern that is more than plain text: it reads the pattern from its end towards
// its beginning, and with it the text, once. Nothing but patterns.cpp and the tests need this.
#pragma once

#include "text/text.h"

namespace modStringTools {

/// What becomes of an attempt to match, for each place (from 1) of a text where it may stand: above 0, the match and
/// its last position; 0, the text ran out; below 0, a refusal by the element of that number.
using Outcomes = std::vector<std::int32_t>;

/// A pattern read against a text. Made by ReadPattern, good for any number of searches in the same text.
struct PatternReading {
    bool Done = false;
    std::int32_t TextLength = 0;
    std::int32_t Offset = 0; ///< places in front of the first one that was read; no match begins there
    /// The outcome of an attempt that begins at each place behind the offset. A pattern with a `+` at its very front
    /// has further ones, by the number of the element that was read last before; for any other pattern [0] is the only
    /// one.
    std::vector<Outcomes> AttemptAfter;
};

/// Reads `pattern`, without its anchors and not empty, against `text` from position `from` on. With `onlyThere` no
/// match is wanted that begins behind `from`; with `toTheEnd` none that doesn't end with the text.
/// Takes as many steps as the text is long for each element of the pattern, whatever the two hold.
PatternReading ReadPattern(TextView text, std::int32_t from, TextView pattern, bool onlyThere, bool toTheEnd,
                           bool caseSensitive);

/// The position of the first match from position `from` on, and its last position; 0 and 0 for none.
std::int32_t FirstMatch(const PatternReading& reading, std::int32_t from, std::int32_t& last);

} // namespace modStringTools
