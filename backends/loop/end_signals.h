// SPDX-License-Identifier: MIT
// The system's wish that the program end, as an event of the loop.
#pragma once

#include "backends/files/host_files.h"
#include "backends/loop/event_loop.h"

#include <functional>
#include <string>

namespace backends {

class EndSignals final : public EventSource {
public:
    /// From now on SIGTERM, SIGINT and SIGHUP come as events, also to threads that are started later.
    EndSignals();

    int Descriptor() override { return Signals.Number(); }
    bool RaiseWhatIsPending() override;

    std::function<void(const std::string& name)> Raised;

private:
    backends::Descriptor Signals;
};

} // namespace backends
