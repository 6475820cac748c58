// SPDX-License-Identifier: MIT
// Waiting that ends early when the process is told to stop, so that what was made is always cleaned away.
#pragma once

#include "apps/quorin-instrument/pacing.h"

namespace instrument {

/// How long to sleep between two looks at something that can't wake us.
inline constexpr Microseconds LookInterval = std::chrono::milliseconds(20);

/// From now on SIGINT, SIGTERM and SIGHUP are requests to stop, and a closed pipe is a failed write.
void CatchStopSignals();

bool StopAsked();

/// False when the process was told to stop meanwhile.
bool PauseFor(Microseconds duration);

} // namespace instrument
