// SPDX-License-Identifier: MIT
// The command line of quorin-import.
#pragma once

#include "apps/options/command_line.h"
#include "apps/quorin-import/import_options.h"

namespace importer {

/// Reads the command line. Returns Run if there is something to import.
apps::Reading ReadOptions(int count, const char* const* words, Options& options);

} // namespace importer
