// SPDX-License-Identifier: MIT
// The words of a verdict at the moment in which it is reported.
#pragma once

#include "companion/value_limits.h"
#include "companion/verdict_words.h"

namespace companion {

/// Returns the words for the driver of the record on screen, whose limits may be null. A value that was kept is an
/// alarm if nobody was asked: a list or a date that is open ignores readings.
struct JudgedWords {
    VerdictWords Verdict; ///< its line says nothing of a limit
    std::optional<OutsideOf> Outside;

    /// Returns the line with the limit: "▲ warning: Moisture 4 % → Wall; below the limit 5".
    Text Line() const;
    /// Returns the limit in short, "▲ warn < 5" or "✖ fail > 80"; empty if the value is inside.
    Text Limit() const;
};

JudgedWords WordsOfJudged(const platform::Verdict& verdict, const ValueLimits* limits);

} // namespace companion
