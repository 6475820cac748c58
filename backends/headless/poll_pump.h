// SPDX-License-Identifier: MIT
// Sleeps by poll, and leaves the program by an exception to the caller of the loop: nothing else catches it.
#pragma once

#include "backends/host/host_pump.h"

namespace backends::headless {

class PollPump : public HostPump {
public:
    bool HandlePending() override { return false; }
    void SleepOn(const std::vector<int>& descriptors, int milliseconds) override;
    [[noreturn]] void Leave(const ProgramOver& over) override { throw over; }
};

} // namespace backends::headless
