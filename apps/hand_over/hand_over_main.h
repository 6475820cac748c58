// SPDX-License-Identifier: MIT
// The hand-over as a program of its own, for one whose form uses the storage layer meanwhile.
#pragma once

#include "apps/start/exit_status.h"

namespace apps {

/// Reads the command line: the options of the device, --hand-over DIR or --count, --name and --journal DIR. Returns the
/// exit status.
start::ExitStatus HandOverMain(int count, const char* const* words);

} // namespace apps
