// SPDX-License-Identifier: MIT
#include "backends/files/lock_wait.h"

#include <thread>

namespace backends {

bool LockWait::Renew() {
    const bool waited = Waits;
    Passed = Clock::duration::zero();
    Waits = false;
    if (waited && Shown)
        Shown(false);
    return waited;
}

bool LockWait::Wait() {
    constexpr Clock::duration Moment = std::chrono::milliseconds(20);
    if (Passed >= Longest)
        return false;
    const auto start = Clock::now();
    if (!Waits && Shown)
        Shown(true);
    Waits = true;
    if (Waiting)
        Waiting();
    std::this_thread::sleep_for(Moment);
    Passed += Clock::now() - start;
    return true;
}

} // namespace backends
