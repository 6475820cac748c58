// SPDX-License-Identifier: MIT
// A device to measure on: one without a window over a folder, whose program has started, and whom nobody watches.
#pragma once

#include "platform/device/no_commands.h"
#include "platform/headless/headless_platform.h"

#include <string>

namespace bench {

class BenchDevice final : platform::device::NoCommands, platform::device::Watcher {
public:
    /// The files of the device lie in `root`; port 1 is the terminal `port`, or none.
    explicit BenchDevice(const std::string& root, const std::string& port = {});
    ~BenchDevice() override;

    platform::headless::HeadlessPlatform Platform;

private:
    // A box would be waited for until the end of days.
    void BoxOpened(const Text& text, platform::BoxButtons, platform::BoxIcon, const Text&) override;
    void TonePlayed(std::int32_t, std::int32_t) override {}
    void StatusShown(const Text&) override {}
    void StatusHidden() override {}
    void KeyGrabbed(std::int32_t) override {}
    void KeyReleased(std::int32_t) override {}
    void CharacterSent(std::int32_t) override {}
    void WritingFailed(const Text& name, platform::ErrorNumber error) override;
};

} // namespace bench
