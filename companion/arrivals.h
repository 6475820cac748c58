// SPDX-License-Identifier: MIT
// What the form is to be led to as soon as it may be: packages to install, a download to open.
#pragma once

#include "companion/packages.h"

#include <deque>

namespace companion {

/// What is in the way of leading the form to another screen.
enum class InTheWay {
    Nothing,
    Record,   ///< a record, or the properties of a driver
    Question, ///< a message box or a prompt
    Screen,   ///< any other screen that a person has to leave
};

/// The form may be led only from the start screen, the screens of drivers, and the preferences with their lists.
/// `isAsked`: a message box is open.
InTheWay WhatIsInTheWay(bool isAsked);

/// Returns when the form may be led: "when this record is done"; empty if nothing is in the way.
Text WhenFree(InTheWay what);

/// One thing that a person wants.
struct Arrival {
    Package Driver = {};     ///< to be installed; without a name: none
    Text Download = {};      ///< to be opened, as a person calls it
    bool MayInstall = false; ///< a person has agreed to install it with what is wrong
    bool MayReplace = false; ///< a person has agreed to replace the package of that name
    bool IsPackage() const { return !Driver.Name.empty(); }
};

class Arrivals {
public:
    /// Adds a package, in place of a waiting one of its name.
    void Add(const Package& package);
    /// Adds a download. Only the last one is opened: each takes the place of the one before.
    void AddDownload(const Text& name);

    bool Any() const { return !List_.empty(); }
    Arrival& First() { return List_.front(); } ///< packages come before the download
    /// Takes the answer to a question about the package of this name: whether it may be installed, or may replace
    /// another one. No drops it.
    void Answer(const Text& name, bool Arrival::*permission, bool isGiven);
    void DropFirst() { List_.pop_front(); }
    void DropAll() { List_.clear(); }

    /// Returns what is offered while something is in the way: "Install climate.qvd when this record is done."; empty if
    /// nothing waits.
    Text Offer(InTheWay what) const;

private:
    std::deque<Arrival> List_;
};

} // namespace companion
