// SPDX-License-Identifier: MIT
#include "backends/files/lock_wait.h"

#include <thread>

namespace backends {

bool LockWait::Renew() {
    const bool waited = Waits_;
    Passed_ = Clock::duration::zero();
    Waits_ = false;
    if (waited && Shown)
        Shown(false);
    return waited;
}

bool LockWait::Wait() {
    constexpr Clock::duration Moment = std::chrono::milliseconds(20);
    if (Passed_ >= Longest)
        return false;
    const auto start = Clock::now();
    if (!Waits_ && Shown)
        Shown(true);
    Waits_ = true;
    if (Waiting)
        Waiting();
    std::this_thread::sleep_for(Moment);
    Passed_ += Clock::now() - start;
    return true;
}

} // namespace backends
