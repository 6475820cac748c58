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
    FromNextLogin, ///< the user is in the group's list, but this login began before that
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

/// Returns one short line for a status area, such as "/dev/ttyUSB0 is busy"; empty for NoError. An empty path is that
/// of a port number without a device. Inspects the path and does not open it.
std::string OpeningTrouble(const std::string& path, platform::ErrorNumber error);

} // namespace backends
