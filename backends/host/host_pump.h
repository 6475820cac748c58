// SPDX-License-Identifier: MIT
// A pump whose sleep is ended by descriptors.
#pragma once

#include "backends/descriptor/waitable.h"
#include "backends/loop/event_loop.h"

#include <vector>

namespace backends {

class HostPump : public Pump {
public:
    /// From now on each of these ends a sleep. They must exist for as long as the pump is used.
    void WakenBy(const Waitable& source) { Sources_.push_back(&source); }
    void WakenByCommands(const Waitable& commands) { Commands_ = &commands; }

    void Sleep(int milliseconds, Wake wake) final { SleepOn(Descriptors(wake), milliseconds); }
    /// Like Sleep; each of these descriptors ends it when it can be read.
    virtual void SleepOn(const std::vector<int>& descriptors, int milliseconds) = 0;

protected:
    /// Returns the descriptors that are open at the moment.
    std::vector<int> Descriptors(Wake wake) const;

private:
    std::vector<const Waitable*> Sources_;
    const Waitable* Commands_ = nullptr;
};

} // namespace backends
