// SPDX-License-Identifier: MIT
// The signals by which the system asks the program to end, as an event of the loop.
#pragma once

#include "backends/files/host_files.h"
#include "backends/loop/event_loop.h"

#include <functional>
#include <string>

namespace backends {

class EndSignals final : public EventSource {
public:
    /// From now on SIGTERM, SIGINT and SIGHUP come as events, also in threads that are started later.
    EndSignals();

    int Descriptor() override { return Signals_.Number(); }
    bool RaiseWhatIsPending() override;

    std::function<void(const std::string& name)> Raised;

private:
    backends::Descriptor Signals_;
};

} // namespace backends
