// SPDX-License-Identifier: MIT
// The command line of quorin-export.
#pragma once

#include "apps/options/command_line.h"
#include "apps/quorin-export/export_options.h"

namespace exporter {

/// Reads the command line. Returns Run if there is something to export.
apps::Reading ReadOptions(int count, const char* const* words, Options& options);

} // namespace exporter
