// SPDX-License-Identifier: MIT
// Waits that end early when the process is told to stop, so that what was created is always removed.
#pragma once

#include "apps/quorin-instrument/pacing.h"

namespace instrument {

/// The interval for polling what can't wake the process.
inline constexpr Microseconds LookInterval = std::chrono::milliseconds(20);

/// From now on SIGINT, SIGTERM and SIGHUP are requests to stop, and writing to a closed pipe fails without a signal.
void CatchStopSignals();

bool StopAsked();

/// Waits. Returns false if the process was told to stop meanwhile.
bool PauseFor(Microseconds duration);

} // namespace instrument
