// SPDX-License-Identifier: MIT
// A device to measure on: headless, with its storage in a folder and its program started.
#pragma once

#include "backends/headless/headless_platform.h"
#include "backends/loop/no_commands.h"
#include "backends/loop/silent_watcher.h"

#include <string>

namespace bench {

/// Stops the benchmark when a message box opens or a save fails, so that no failed run is measured.
class BenchWatcher final : public backends::SilentWatcher {
public:
    // Without this a run would wait for an answer for ever.
    void BoxOpened(const Text& text, platform::BoxButtons, platform::BoxIcon, const Text&) override;
    void NotSaved(const Text& file, const Text& why) override;
};

/// The files of the device are in `root`; port 1 is the terminal `port`, or none.
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
