// SPDX-License-Identifier: MIT
// What people read about a verdict: the same words in every window, list and report.
#pragma once

#include "src/view/platform/reading_log.h"

namespace companion {

struct VerdictWords {
    Text Line;
    bool IsAlarm = false; ///< the reading is not stored, or was written where it may not belong
    bool operator==(const VerdictWords&) const = default;
};

/// Returns one line, without the time. A mark comes first: ● for a reading that was written to the screen, ○ for one
/// that was not. `driver`: the driver of the record on screen. Texts from the instrument are shortened, and their
/// control characters are blanks.
VerdictWords WordsOf(const platform::Verdict& verdict, TextView driver);

} // namespace companion
