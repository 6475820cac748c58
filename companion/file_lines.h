// SPDX-License-Identifier: MIT
// The lines of a text file.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace companion {

/// Returns the lines of a file, without their ends, LF or CR LF, and without a byte-order mark.
std::vector<Text> LinesOf(TextView file);

} // namespace companion
