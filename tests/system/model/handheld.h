// SPDX-License-Identifier: MIT
// The device of a shift: the whole program, started again each time that it ends, and its files as others see them.
#pragma once

#include "backends/headless_input/headless_hand.h"
#include "backends/loop/no_commands.h"
#include "backends/loop/silent_watcher.h"
#include "tests/system/model/calendar.h"
#include "tests/system/model/model.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace shift {

/// A kind of device.
struct Kind {
    const char* Name;
    std::int32_t DeviceType;
    LinkKind KindOfLink;
    const char* Port;       ///< as in the list of ports
    const char* DataFolder; ///< on the host; nullptr for line databases
};

/// The host folder of a device. It is in memory where the machine has such a place, because a shift saves ten thousand
/// times; power_loss tests that files reach the medium.
class DeviceFolder {
public:
    explicit DeviceFolder(const Kind& kind);
    ~DeviceFolder();
    DeviceFolder(const DeviceFolder&) = delete;
    DeviceFolder& operator=(const DeviceFolder&) = delete;

    std::filesystem::path Root() const { return Root_; }
    /// Returns the lines of a data file, each followed by LF; nothing if the file does not exist.
    std::optional<std::string> Read(const std::string& name) const;
    /// Returns the names of all data files, without the scratch files that a killed program has left.
    std::set<std::string> Names() const;

    void PutPackage(const std::string& name, const std::string& lines) const;
    void PutMailbox(const std::string& name, const std::string& bytes) const;
    void RemoveMailbox(const std::string& name) const;
    bool HasMailbox(const std::string& name) const;

private:
    std::filesystem::path PathOf(const std::string& name) const;

    bool Databases_;
    std::filesystem::path Root_;
    std::filesystem::path Data_;
};

/// The program on a device. `step` is called each time that the program waits for input, also while a box or a prompt
/// is open.
class Handheld final : backends::NoCommands, backends::SilentWatcher {
public:
    Handheld(const Kind& kind, const DeviceFolder& folder, Moment now, std::function<void()> step);
    ~Handheld() override;

    /// Runs the program until it ends or the test leaves its loop.
    backends::ProgramOver Run();

    backends::headless::HeadlessPlatform& Device() { return *Platform_; }
    backends::Hand& User() { return *User_; }
    /// Returns the boxes and tones since the last call.
    std::vector<std::string> TakeEvents();

private:
    bool HasCommand() override { return true; }
    void RunCommand() override;

    void BoxOpened(const Text& text, platform::BoxButtons buttons, platform::BoxIcon icon, const Text& title) override;
    void TonePlayed(std::int32_t hertz, std::int32_t milliseconds) override;
    void Warned(const Text&, const Text&) override {} ///< the form shows no warnings, so the model has none
    void NotSaved(const Text& file, const Text& why) override;

    std::function<void()> Step_;
    std::vector<std::string> Events_;
    std::unique_ptr<backends::HostDevice> Host_;
    std::unique_ptr<backends::headless::HeadlessPlatform> Platform_;
    std::unique_ptr<backends::headless::HeadlessHand> User_;
};

} // namespace shift
