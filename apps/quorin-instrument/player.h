// SPDX-License-Identifier: MIT
// Plays a stream: takes its records one by one, harms those that are to be harmed, and sends each at its pace.
#pragma once

#include "apps/quorin-instrument/faults.h"
#include "apps/quorin-instrument/outlet.h"
#include "apps/quorin-instrument/pacing.h"
#include "apps/quorin-instrument/stream.h"

namespace instrument {

struct PlayOptions {
    bool Fast = false;                     ///< no pauses for the speed of the line
    bool InDeliveries = false;             ///< a record goes out whole, as a mailbox wants it
    std::chrono::milliseconds Interval{0}; ///< between a result's record and the next record
    FaultPlan Faults;
    std::uint32_t Seed = 1; ///< of the faults: they leave what is measured as it is
};

/// Waits; false when the process was told to stop meanwhile.
using PauseRoutine = std::function<bool(Microseconds)>;

/// Sends what `source` gives until it ends, the outlet fails, or the process is told to stop.
Outcome Play(const RecordSource& source, const PlayOptions& options, Outlet& outlet, const PauseRoutine& pause);

} // namespace instrument
