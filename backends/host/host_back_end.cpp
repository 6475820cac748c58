// SPDX-License-Identifier: MIT
#include "backends/host/host_back_end.h"

#include "companion/words.h"

namespace backends {

HostBackEnd::HostBackEnd(HostDevice& device, HostPump& pumpOfHost, CommandSource& commands, Watcher& watcher)
    : BackEnd(device.Parts(), pumpOfHost, commands, watcher), host(device), pump(pumpOfHost) {
    Rights = {.Lost =
                  [this](const std::string& file) {
                      onlooker.notices.Raise(companion::RightsNotKept(modStringTools::FromBytes(file)));
                  },
              .Told = {}};
    onlooker.FindLimits = [this](const Text& driver, Text& why) {
        LimitsFile::Content content = host.limits.Read(driver);
        why = content.Why;
        return content.Table;
    };
    loop.Begins = [this] { BeginOperation(); };
    pump.WakenBy(host.ports);
}

HostBackEnd::~HostBackEnd() {
    Rights = {};
}

void HostBackEnd::BeginOperation() {
    if (host.hostDatabases.Patience.Renew())
        WasHeldUp();
}

} // namespace backends
