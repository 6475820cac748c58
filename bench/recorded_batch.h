// SPDX-License-Identifier: MIT
#pragma once

#include "bench/ratio.h"

namespace bench {

/// 1,000 results of one batch, from the port to the cells of a record in a window, with all that the window keeps of
/// them (journal, drafts, the readings of the run) beside the same without.
Sides RecordedBatch(const std::string& folder);

} // namespace bench
