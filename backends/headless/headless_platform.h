// SPDX-License-Identifier: MIT
// A whole device without a window.
#pragma once

#include "backends/headless/headless_control_set.h"
#include "backends/headless/poll_pump.h"
#include "backends/host/host_back_end.h"

namespace backends::headless {

class HeadlessPlatform final : private PollPump, public HostBackEnd, public HeadlessControlSet {
public:
    HeadlessPlatform(HostDevice& device, CommandSource& commands, Watcher& watcher);

    Platform record;

    const Controls& Seen() const override { return controls; }

protected:
    Platform& Record() override { return record; }
};

} // namespace backends::headless
