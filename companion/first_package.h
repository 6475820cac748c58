// SPDX-License-Identifier: MIT
// Makes a first driver package of what an instrument has sent.
#pragma once

#include "companion/recorded_results.h"

#include <vector>

namespace companion {

/// Returns the lines of a package with a row for each variable and each result type; two plain fields come first, and
/// date and time last. It is named after the instrument. REQUIRES: at least one result that is not lost.
std::vector<Text> FirstPackage(const std::vector<RecordedResult>& results);

} // namespace companion
