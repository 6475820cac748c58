// SPDX-License-Identifier: MIT
// How a simulated instrument misbehaves on purpose.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace instrument {

/// Which records have a fault: 0 none, n each n-th one. Connect records are neither counted nor harmed.
struct FaultPlan {
    int Noise = 0;       ///< a few lines of rubbish in front
    int SplitLines = 0;  ///< its lines come in pieces; what that means is for the pacing
    int WrongOrigin = 0; ///< comes from an instrument that never introduced itself
    int LoseEndTag = 0;  ///< its closing line is lost
    int DropLine = 0;    ///< a line between its first and its last is lost
};

/// Whether a fault that stands in the plan as `every` falls on the record of that number, counted from 1.
bool FallsOn(int every, std::int64_t number);

/// The record as it goes out. Which line is lost, and the rubbish, are drawn from `engine`.
std::string Misbehave(std::string_view record, std::int64_t number, const FaultPlan& plan, std::mt19937& engine);

/// One to three lines, each ended by CR LF: printable characters and bytes above 127, no bracket among them, so that no
/// line can be taken for a tag.
std::string RubbishLines(std::mt19937& engine);

} // namespace instrument
