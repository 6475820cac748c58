// SPDX-License-Identifier: MIT
// Hints for a person who uses the program for the first time. Each is about the next step to a reading, and is shown
// only until that step has been done once.
#pragma once

#include "companion/notices.h"

#include <functional>
#include <set>
#include <string>

namespace companion {

/// What is there, as far as the hints are concerned.
struct Surroundings {
    bool HasDriver = false;
    bool IsStart = false;           ///< the first screen is shown
    bool IsListOfDownloads = false; ///< the downloads of a driver are on the screen
    bool HasDownload = false;       ///< that list is not empty
    bool HasPort = false;           ///< a port is chosen
    /// The first port whose address the command line or an earlier choice gives, "Com1 is /dev/ttyUSB0", and its name
    /// for an offer, "Com1"; both empty for none.
    std::string NamedPort = {};
    std::string NameOfPort = {};
    bool LinkIsOpen = false;
    /// Why the port of the record on the screen could not be opened: "Com1 is /dev/ttyUSB0: unplugged"; empty if it
    /// takes no readings, or nothing is wrong.
    std::string PortTrouble = {};
};

/// The hint of a device without a driver.
Notice NoDriverHint();

class Hints {
public:
    /// The names of the steps, which are also those in which they are remembered: driver, download, port, link.
    using Steps = std::set<std::string>;

    /// `done`: the steps that were done in earlier runs.
    explicit Hints(Notices& notices, Steps done = {}) : Notices_(notices), Done_(std::move(done)) {}

    /// Shows the hint for what is there, or none. A step that has been done is reported once.
    void Look(const Surroundings& now);

    /// While it is off, no hint is shown, and steps that are done are noticed all the same.
    void SetOn(bool on);
    bool IsOn() const { return IsOn_; }

    const Steps& Done() const { return Done_; }
    /// True if it has to be found out whether a driver is installed.
    bool AsksForDriver() const;
    std::function<void()> DoneChanged; ///< called when a step was done for the first time

private:
    void Show(const Surroundings& now);
    bool Wanted(const char* step) const { return Done_.count(step) == 0; }

    Notices& Notices_;
    Steps Done_;
    bool IsOn_ = true;
};

} // namespace companion
