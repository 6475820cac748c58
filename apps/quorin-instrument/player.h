// SPDX-License-Identifier: MIT
// Plays a stream: reads its records one by one, applies the faults, and sends each at its pace.
#pragma once

#include "apps/quorin-instrument/faults.h"
#include "apps/quorin-instrument/outlet.h"
#include "apps/quorin-instrument/pacing.h"
#include "apps/quorin-instrument/stream.h"

namespace instrument {

struct PlayOptions {
    bool Fast = false;                     ///< no pauses for the speed of the line
    bool InDeliveries = false;             ///< records are cut for a mailbox, not for a line
    std::chrono::milliseconds Interval{0}; ///< between a result's record and the next record
    FaultPlan Faults;
    std::uint32_t Seed = 1; ///< for the faults only; the values measured do not depend on it
};

/// Waits. Returns false if the process was told to stop meanwhile.
using PauseRoutine = std::function<bool(Microseconds)>;

/// Sends the records of `source` until it ends, the outlet fails, or the process is told to stop.
Outcome Play(const RecordSource& source, const PlayOptions& options, Outlet& outlet, const PauseRoutine& pause);

} // namespace instrument
