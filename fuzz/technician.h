// SPDX-License-Identifier: MIT
// The whole program on files of any bytes, used by a technician who can't be put off: what the program does not offer
// at a moment is left out.
#pragma once

#include "backends/headless/headless_hand.h"
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

    /// A click on a soft menu entry, and whatever comes of it at once. A box is answered Yes or Ok, a prompt with
    /// `Answer`.
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

/// Starts the program on the place as it is and does the work. Gives the message that the program stopped with; an
/// empty text when it was not stopped.
std::string WorkOn(const Place& place, std::int32_t deviceType, const Work& work);

/// One run: an emptied place, files, the work, and the program can be started again on what that left behind. Nothing
/// outside of the root was touched, and what stopped the program has one of the allowed `reasons` in its message.
void Run(const Place& place, std::int32_t deviceType, const std::function<void()>& putFiles, const Work& work,
         std::initializer_list<const char*> reasons);

// What the files of a device hold that has the driver "Meter" and one download of it.
extern const char* const DriversTable;
extern const char* const ControlTable;
extern const char* const InfTable;
extern const char* const Download;
extern const char* const Settings;

/// Puts them all; a target then replaces one.
void PutMeter(const Place& place);

inline std::string AsString(const std::uint8_t* bytes, std::size_t count) {
    return {reinterpret_cast<const char*>(bytes), count};
}

} // namespace fuzz
