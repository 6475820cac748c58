// SPDX-License-Identifier: MIT
// What people read about a verdict: the same words in every window, list and report.
#pragma once

#include "src/view/platform/reading_log.h"

namespace companion {

/// How good a verdict is for who waits for the reading.
enum class Outcome {
    Taken, ///< the next save stores it
    Left,  ///< it is not stored, as a person has decided
    Alarm, ///< it is not stored, was written where it may not belong, or is outside of a limit that it must not pass
};

struct VerdictWords {
    Text Line;
    companion::Outcome Outcome = companion::Outcome::Taken;
    bool operator==(const VerdictWords&) const = default;
};

/// Returns one line, without the time. A mark comes first: ● for a reading that was written to the screen, ○ for one
/// that was not. `driver`: the driver of the record on screen. Texts from the instrument are shortened, and their
/// control characters are blanks.
VerdictWords WordsOf(const platform::Verdict& verdict, TextView driver);

} // namespace companion
