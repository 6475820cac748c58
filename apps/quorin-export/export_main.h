// SPDX-License-Identifier: MIT
// The program without its main, for the tests.
#pragma once

#include "apps/start/exit_status.h"

namespace exporter {

/// Reads the command line and exports. Returns the exit status.
start::ExitStatus ExportMain(int count, const char* const* words);

} // namespace exporter
