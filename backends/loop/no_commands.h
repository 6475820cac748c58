// SPDX-License-Identifier: MIT
// The command source of a device that gets no commands, only user input.
#pragma once

#include "backends/loop/event_loop.h"

namespace backends {

class NoCommands : public CommandSource {
public:
    void AboutToWait(int) override {}
    bool HasCommand() override { return false; }
    bool Ended() override { return false; }
    void TakeInput() override {}
    void RunCommand() override {}
};

} // namespace backends
