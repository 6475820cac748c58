// SPDX-License-Identifier: MIT
// A device of a root folder without its form, for programs that use the storage layer's routines alone.
#pragma once

#include "backends/headless/headless_platform.h"
#include "backends/loop/no_commands.h"
#include "backends/loop/silent_watcher.h"

namespace backends::headless {

class FormlessDevice {
public:
    explicit FormlessDevice(const DeviceOptions& options) : Host(options), Platform(Host, Commands_, Watcher_) {}

private:
    NoCommands Commands_;
    SilentWatcher Watcher_;

public:
    HostDevice Host;
    HeadlessPlatform Platform;
};

} // namespace backends::headless
