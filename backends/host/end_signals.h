// SPDX-License-Identifier: MIT
// The signals by which the system asks the program to end, as an event of the loop.
#pragma once

#include "backends/descriptor/descriptor.h"
#include "backends/descriptor/waitable.h"
#include "backends/loop/event_loop.h"

#include <functional>
#include <string>

namespace backends {

class EndSignals final : public EventSource, public Waitable {
public:
    /// From now on SIGTERM, SIGINT and SIGHUP arrive as events, also in threads that are started later.
    EndSignals();

    int Descriptor() const override { return Signals_.Number(); }
    bool RaiseWhatIsPending() override;

    std::function<void(const std::string& name)> Raised;

private:
    backends::Descriptor Signals_;
};

} // namespace backends
