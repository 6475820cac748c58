// SPDX-License-Identifier: MIT
#pragma once

#include "bench/ratio.h"

namespace bench {

std::vector<Row> WalkRows();     ///< reading of text files
std::vector<Row> RewriteRows();  ///< changing of text files
std::vector<Row> DatabaseRows(); ///< changing of line databases

} // namespace bench
