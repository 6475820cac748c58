// SPDX-License-Identifier: MIT
// The whole program on files of arbitrary bytes, and a technician who uses it. An action that is not possible at a
// moment is skipped.
#pragma once

#include "backends/headless_input/headless_hand.h"
#include "backends/loop/no_commands.h"
#include "backends/loop/silent_watcher.h"
#include "fuzz/place.h"

#include <cstdint>
#include <functional>
#include <string>

namespace fuzz {

class Technician final : backends::NoCommands, backends::SilentWatcher {
public:
    Technician(const Place& place, std::int32_t deviceType);
    ~Technician() override;

    /// Clicks a soft menu entry, and handles what follows at once. A box is answered Yes or Ok, a prompt with `Answer`.
    void Choose(const Text& caption);
    void Tap(std::int32_t row, std::int32_t col = 0);
    /// Edits the value of a row of the record screen in place.
    void Enter(std::int32_t row, const Text& value);
    void Receive(const Text& text);
    void Tick(std::int64_t milliseconds) { Device.loop.PassTime(milliseconds); }

    Text Answer = u"Answer"; ///< to prompts
    std::string Boxes;       ///< the messages of all boxes, each with a line end

    backends::HostDevice Host;
    backends::headless::HeadlessPlatform Device;
    backends::headless::HeadlessHand Hand{Device};

private:
    bool HasCommand() override { return true; }
    void RunCommand() override;

    void BoxOpened(const Text& text, platform::BoxButtons, platform::BoxIcon, const Text&) override;

    int Waited_ = 0;
};

using Work = std::function<void(Technician&)>;

/// Starts the program on the place as it is and does the work. Returns the message that the program stopped with; empty
/// if it was not stopped.
std::string WorkOn(const Place& place, std::int32_t deviceType, const Work& work);

/// One run: empties the place, puts the files, does the work, and starts the program again on the result. Requires that
/// nothing outside of the root was touched, that a message that stopped the program contains one of the allowed
/// `reasons`, and that the second start is not stopped.
void Run(const Place& place, std::int32_t deviceType, const std::function<void()>& putFiles, const Work& work,
         std::initializer_list<const char*> reasons);

// The contents of the files of a device that has the driver "Meter" and one download of it.
extern const char* const DriversTable;
extern const char* const ControlTable;
extern const char* const InfTable;
extern const char* const Download;
extern const char* const Settings;

/// Puts all these files; a target then replaces one.
void PutMeter(const Place& place);

inline std::string AsString(const std::uint8_t* bytes, std::size_t count) {
    return {reinterpret_cast<const char*>(bytes), count};
}

} // namespace fuzz
