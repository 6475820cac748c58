// SPDX-License-Identifier: MIT
#pragma once

#include "backends/loop/clock.h"

namespace backends {

/// Returns the clocks of this machine.
MachineTime HostTime();

} // namespace backends
