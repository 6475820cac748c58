// SPDX-License-Identifier: MIT
// How long the program waits for another one that has locked a file.
#pragma once

#include <chrono>
#include <functional>

namespace backends {

/// One patience for all calls of an operation: each may find the lock anew, and a person waits for their sum.
class LockWait {
public:
    /// A new operation begins. Whether the one before it has waited.
    bool Renew();
    /// To be called while a file is locked. Lets a moment pass; false once there is no patience left.
    bool Wait();

    std::chrono::milliseconds Longest{5000};
    std::function<void(bool)> Shown; ///< whether there is something to wait for, for who wants to show it
    std::function<void()> Waiting;   ///< called again and again meanwhile

private:
    using Clock = std::chrono::steady_clock;

    Clock::duration Passed{}; ///< of this operation
    bool Waits = false;
};

} // namespace backends
