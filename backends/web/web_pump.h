// SPDX-License-Identifier: MIT
// Sleeps by poll. A page sees only what it is shown, so it is shown the screen in each round of events and before each
// sleep.
#pragma once

#include "backends/headless/poll_pump.h"

#include <functional>

namespace backends::web {

class WebPump : public headless::PollPump {
public:
    bool HandlePending() override {
        if (Shows)
            Shows();
        return false;
    }
    void SleepOn(const std::vector<int>& descriptors, int milliseconds) override {
        HandlePending();
        PollPump::SleepOn(descriptors, milliseconds);
    }

    std::function<void()> Shows;
};

} // namespace backends::web
