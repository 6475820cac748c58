// SPDX-License-Identifier: MIT
// Searches: attempts to match, one after the other until one holds, computed from the results of a reading for each
// place. Places are numbered by the characters left, as in place_sets.h.
#pragma once

#include "src/text/pattern_state.h"

namespace modStringTools {

/// Fills the set of the `+` at `number`, in a row of `+` signs that ends at `to`, with the places after which a match
/// of the pattern's rest begins. REQUIRES: the reading's outcomes are those of the element after the row.
void MakeRest(PatternReading& reading, std::size_t number, std::size_t to);

} // namespace modStringTools
