// SPDX-License-Identifier: MIT
// The line of a row: its fields, joined by `|`.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace modFileSystem {

/// Splits a line into fields. An empty line is one empty field, and a bar at the end is followed by an empty field. The
/// texts in the list are reused, so that a walk over a table allocates little.
void Split(TextView line, std::vector<Text>& fields);

Text Join(const std::vector<Text>& fields);

} // namespace modFileSystem
