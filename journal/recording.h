// SPDX-License-Identifier: MIT
// A recording with times, as docs/formats.md describes it: what came over a line, and when.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace journal {

inline constexpr std::string_view RecordingHead = "quorin-times 1\n";

/// Times the lines of a recording. Within a run of the program the time between two lines is by the clock that can't be
/// set, between two runs by the clock of the form.
class RecordingTimes {
public:
    /// Takes the first line of a run.
    void BeginRun() { IsSameRun_ = false; }
    /// Takes the `ms` of a line, and its `time` in seconds since any moment. Returns the milliseconds since the line
    /// before; 0 for the first, and where the clock was set back.
    std::int64_t SinceLast(std::int64_t ms, std::int64_t second);

private:
    std::int64_t LastMs_ = 0;
    std::int64_t LastSecond_ = 0;
    bool IsFirst_ = true;
    bool IsSameRun_ = false;
};

/// Returns one line of a recording, with its end.
std::string RecordingLine(std::int64_t milliseconds, std::string_view bytes);

} // namespace journal
