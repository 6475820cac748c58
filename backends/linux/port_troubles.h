// SPDX-License-Identifier: MIT
// Why a serial device can't be opened, and what a person can do about it, in words.
#pragma once

#include "backends/linux/port_holders.h"
#include "companion/ports.h"
#include "src/view/platform/errors.h"

#include <string>

namespace backends {

using namespace platform;

using companion::PortTrouble;

enum class Membership {
    None,
    FromNextLogin, ///< the list of groups has the user, and this login began before it did
    Now,
};

/// Who may open a device, and how this user stands to them.
struct PortRights {
    std::string Owner;
    std::string Group;
    bool GroupMayOpen = false; ///< read and write
    std::string User;
    Membership OfGroup = Membership::None;
};

/// What the system says of a path and of who runs this program.
PortRights RightsOf(const std::string& path);

PortTrouble NoPermission(const std::string& path, const PortRights& rights);
PortTrouble HeldBy(const std::string& path, const PortHolder& holder);

/// The trouble that a value of errno stands for, but for missing permission. EBUSY is somebody who can't be seen.
PortTrouble OpeningFailed(const std::string& path, int code);

/// One short line for a status area: "/dev/ttyUSB0 is busy". Empty for NoError; an empty path is that of a port number
/// that means no device. Looks at the path, and opens nothing.
std::string OpeningTrouble(const std::string& path, platform::ErrorNumber error);

} // namespace backends
