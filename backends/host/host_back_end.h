// SPDX-License-Identifier: MIT
// A back-end on a device of this host: what BackEnd has for every system, and what a host with files adds.
#pragma once

#include "backends/host/host_device.h"
#include "backends/host/host_pump.h"

namespace backends {

class HostBackEnd : public BackEnd {
public:
    /// Both must exist for as long as the back-end.
    HostBackEnd(HostDevice& device, HostPump& pumpOfHost, CommandSource& commands, Watcher& watcher);
    ~HostBackEnd() override;

    HostDevice& host;
    HostPump& pump;

    /// From now on the loop asks a source that also ends its sleep. The source must exist for as long as the loop runs.
    template <class Source>
    void Listen(Source& source) {
        loop.Listen(source);
        pump.WakenBy(source);
    }

protected:
    /// Called before a round of events: each round has its own time to wait for other programs.
    void BeginOperation();
};

} // namespace backends
