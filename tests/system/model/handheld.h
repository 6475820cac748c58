// SPDX-License-Identifier: MIT
// The device of a shift: the whole program, started as often as it ends, and its files as anybody else sees them.
#pragma once

#include "backends/headless/headless_hand.h"
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

/// A kind of device, with what a shift must know of it.
struct Kind {
    const char* Name;
    std::int32_t DeviceType;
    Road RoadOfLink;
    const char* Port;       ///< as the list of ports has it
    const char* DataFolder; ///< on the host; nullptr for line databases
};

/// The host folder of a device. In memory where the machine has such a place: that files reach the medium is another
/// test's matter, and a shift saves ten thousand times.
class DeviceFolder {
public:
    explicit DeviceFolder(const Kind& kind);
    ~DeviceFolder();
    DeviceFolder(const DeviceFolder&) = delete;
    DeviceFolder& operator=(const DeviceFolder&) = delete;

    std::filesystem::path Root() const { return Root_; }
    /// The lines of a data file, each with LF behind it; nothing when there is no such file.
    std::optional<std::string> Read(const std::string& name) const;
    /// The names of all data files; a scratch file that a killed program has left is none.
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

/// The program on a device. `step` is called whenever the program waits for somebody to do something, also while a box
/// or a prompt stands, as often as it waits.
class Handheld final : backends::NoCommands, backends::SilentWatcher {
public:
    Handheld(const Kind& kind, const DeviceFolder& folder, Moment now, std::function<void()> step);
    ~Handheld() override;

    /// Runs the program until it ends, or is left.
    backends::ProgramOver Run();

    backends::headless::HeadlessPlatform& Device() { return *Platform_; }
    backends::Hand& User() { return *User_; }
    /// Boxes and tones since somebody looked.
    std::vector<std::string> TakeEvents();

private:
    bool HasCommand() override { return true; }
    void RunCommand() override;

    void BoxOpened(const Text& text, platform::BoxButtons buttons, platform::BoxIcon icon, const Text& title) override;
    void TonePlayed(std::int32_t hertz, std::int32_t milliseconds) override;
    void Warned(const Text&, const Text&) override {} ///< the model is of the form, which knows nothing of it
    void NotSaved(const Text& file, const Text& why) override;

    std::function<void()> Step_;
    std::vector<std::string> Events_;
    std::unique_ptr<backends::HostDevice> Host_;
    std::unique_ptr<backends::headless::HeadlessPlatform> Platform_;
    std::unique_ptr<backends::headless::HeadlessHand> User_;
};

} // namespace shift
