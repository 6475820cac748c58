// SPDX-License-Identifier: MIT
// The faults that a simulated instrument makes on purpose.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace instrument {

/// Which records have a fault: 0 none, n every n-th one. Connect records are not counted and have no fault.
struct FaultPlan {
    int Noise = 0;       ///< a few lines of rubbish before it
    int SplitLines = 0;  ///< its lines are sent in pieces; the pacing decides how
    int WrongOrigin = 0; ///< comes from an instrument that never introduced itself
    int LoseEndTag = 0;  ///< its closing line is lost
    int DropLine = 0;    ///< a line between its first and its last is lost
};

/// True if a fault of every `every`-th record applies to the record of that number, counted from 1.
bool FallsOn(int every, std::int64_t number);

/// Returns the record as it is sent. `engine` chooses the line that is lost, and the rubbish.
std::string Misbehave(std::string_view record, std::int64_t number, const FaultPlan& plan, std::mt19937& engine);

/// Returns one to three lines, each ended by CR LF: printable characters and bytes above 127, without brackets, so that
/// no line can be mistaken for a tag.
std::string RubbishLines(std::mt19937& engine);

} // namespace instrument
