// SPDX-License-Identifier: MIT
// A device to measure on: one without a window over a folder, whose program has started, and whom nobody watches.
#pragma once

#include "backends/headless/headless_platform.h"
#include "backends/loop/no_commands.h"
#include "backends/loop/silent_watcher.h"

#include <string>

namespace bench {

/// Sees to it that nothing is measured that did not go as planned.
class BenchWatcher final : public backends::SilentWatcher {
public:
    // A box would be waited for until the end of days.
    void BoxOpened(const Text& text, platform::BoxButtons, platform::BoxIcon, const Text&) override;
    void NotSaved(const Text& file, const Text& why) override;
};

/// The files of the device lie in `root`; port 1 is the terminal `port`, or none.
backends::DeviceOptions OptionsFor(const std::string& root, const std::string& port = {});

class BenchDevice {
public:
    explicit BenchDevice(const std::string& root, const std::string& port = {});
    BenchDevice(const BenchDevice&) = delete;
    BenchDevice& operator=(const BenchDevice&) = delete;
    ~BenchDevice();

private:
    BenchWatcher Watcher_;
    backends::NoCommands Commands_;
    backends::HostDevice Host_;

public:
    backends::headless::HeadlessPlatform Platform;
};

} // namespace bench
