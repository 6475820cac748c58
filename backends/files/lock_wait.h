// SPDX-License-Identifier: MIT
// How long the program waits for another one that has locked a file.
#pragma once

#include <chrono>
#include <functional>

namespace backends {

/// One time limit for all calls of an operation: each may find the file locked again, and the user waits for the sum.
class LockWait {
public:
    /// Begins a new operation. Returns true if the previous one has waited.
    bool Renew();
    /// Call this while a file is locked. Waits for a moment and returns true; returns false when the time limit is used
    /// up.
    bool Wait();

    std::chrono::milliseconds Longest{5000};
    std::function<void(bool)> Shown; ///< called with true when a wait begins and with false when it is over, to show it
    std::function<void()> Waiting;   ///< called repeatedly during the wait

private:
    using Clock = std::chrono::steady_clock;

    Clock::duration Passed_{}; ///< waited by this operation
    bool Waits_ = false;
};

} // namespace backends
