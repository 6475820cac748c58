// SPDX-License-Identifier: MIT
// Why a serial device can't be opened, and what the user can do about it.
#pragma once

#include "backends/linux/port_holders.h"
#include "companion/ports/port_table.h"
#include "src/view/platform/errors.h"

#include <string>

namespace backends {

using namespace platform;

enum class Membership {
    None,
    FromNextLogin, ///< the list of groups has the user, and this login began before it did
    Now,
};

/// Who may open a device, and the relation of this user to them.
struct PortRights {
    std::string Owner;
    std::string Group;
    bool GroupMayOpen = false; ///< read and write
    std::string User;
    Membership OfGroup = Membership::None;
};

/// Returns the rights on a path, for the user of this program.
PortRights RightsOf(const std::string& path);

companion::PortTrouble NoPermission(const std::string& path, const PortRights& rights);
companion::PortTrouble HeldBy(const std::string& path, const PortHolder& holder);

/// Returns the trouble for a value of errno other than missing permission. EBUSY means a program that can't be seen.
companion::PortTrouble OpeningFailed(const std::string& path, int code);

/// One short line for a status area: "/dev/ttyUSB0 is busy". Empty for NoError; an empty path is that of a port number
/// that means no device. Looks at the path, and opens nothing.
std::string OpeningTrouble(const std::string& path, platform::ErrorNumber error);

} // namespace backends
