// SPDX-License-Identifier: MIT
// A slow medium is no sleep of the device.
#pragma once

#include "backends/loop/back_end.h"

#include <chrono>

namespace backends {

/// Lives as long as a call that may wait for a medium. If that took long, the time is not taken for a sleep of the
/// device, after which the link would be opened anew.
class LongCall {
public:
    explicit LongCall(BackEnd& device) : Device_(device) {}
    LongCall(const LongCall&) = delete;
    LongCall& operator=(const LongCall&) = delete;
    ~LongCall() {
        if (std::chrono::steady_clock::now() - Begin_ > std::chrono::milliseconds(500))
            Device_.WasHeldUp();
    }

private:
    BackEnd& Device_;
    std::chrono::steady_clock::time_point Begin_ = std::chrono::steady_clock::now();
};

} // namespace backends
