// SPDX-License-Identifier: MIT
#pragma once

#include "bench/ratio.h"

namespace bench {

/// The road of 1,000 results of one batch, from the port to the record, with all that the window keeps of them
/// (journal, drafts, the readings of the run) beside the same without. No row of the record asks for them, which is the
/// least that the form can do with a result.
Sides RefusedBatch(const std::string& folder);
/// The same with a record of 1,000 fields, which takes them all.
Sides TakenBatch(const std::string& folder);

} // namespace bench
