// SPDX-License-Identifier: MIT
// Tells a person at a terminal how far an export is.
#pragma once

#include <chrono>
#include <string>

namespace exporter {

using ProgressClock = std::chrono::steady_clock;

/// Writes to standard error if that is a terminal and the export takes longer than a second.
class Progress {
public:
    /// `expected`: how much there is to do, in what Advance counts; about. `since`: when the export began.
    Progress(std::string file, std::size_t expected, ProgressClock::time_point since = ProgressClock::now());
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress(); ///< removes the line

    void Advance(std::size_t done);

    /// How long nothing is shown, for tests, which do not wait.
    static inline ProgressClock::duration Patience = std::chrono::seconds(1);

private:
    std::string File_;
    std::size_t Expected_;
    std::size_t Done_ = 0;
    bool IsTerminal_;
    bool IsShown_ = false;
    ProgressClock::time_point Next_;
};

} // namespace exporter
