// SPDX-License-Identifier: MIT
// Attempts to match that follow each other until one holds, out of what a reading has found for each place. Places are
// told by the characters left, as in place_sets.h.
#pragma once

#include "src/text/pattern_state.h"

namespace modStringTools {

/// Puts down for the `+` at `number`, out of the row of them that ends at `to`, where a match of what stands behind it
/// begins further on. The outcomes are those of the element behind the row.
void MakeRest(PatternReading& reading, std::size_t number, std::size_t to);

} // namespace modStringTools
