// SPDX-License-Identifier: MIT
// A recording with times: what came over a line, and how long after the piece before. docs/formats.md has its form.
#pragma once

#include "apps/quorin-instrument/outlet.h"
#include "apps/quorin-instrument/player.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace instrument {

struct TimedPiece {
    std::chrono::milliseconds Wait{0}; ///< before it
    std::string Bytes;
};

/// Reads a recording. Returns an empty text, or what is wrong.
std::string ReadTimes(std::string_view text, std::vector<TimedPiece>& pieces);

/// Sends the pieces with their pauses, `speed` times as fast, or without pauses for 0.
Outcome PlayTimes(const std::vector<TimedPiece>& pieces, double speed, Outlet& outlet, const PauseRoutine& pause);

} // namespace instrument
