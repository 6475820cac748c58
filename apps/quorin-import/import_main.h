// SPDX-License-Identifier: MIT
#pragma once

#include "apps/start/exit_status.h"

namespace importer {

/// The program. `words`: those of main, the first one is its name.
start::ExitStatus ImportMain(int count, const char* const* words);

} // namespace importer
