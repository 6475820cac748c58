// SPDX-License-Identifier: MIT
// The serial devices of this machine, what "ComN" means by them, and why one can't be opened.
#pragma once

#include "backends/linux/port_troubles.h"
#include "backends/linux/udev_names.h"
#include "backends/serial/port_address.h"
#include "companion/ports/port_table.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace backends {

enum class PortTrial { Open, LookOnly };

/// Tries a device. Returns 0 on success, else the value of errno. Open: opens the device without waiting and closes it
/// at once; ENOTTY if it is not a terminal. LookOnly: checks its permissions alone, which is also done for every port
/// of the board.
int TryPort(const std::string& path, PortTrial trial);

/// Where a survey looks, and by what means.
struct PortSurvey {
    std::map<std::int32_t, PortAddress> Pinned;
    std::string Own; ///< path of the device that this program has open; empty for none
    std::string DeviceFolder = "/dev";
    std::string SystemFolder = "/sys";
    std::string ProcessFolder = "/proc";
    std::string LockFolder = "/run/lock";
    std::function<int(const std::string& path, PortTrial trial)> Try = TryPort;
    std::function<companion::DeviceName(const std::string& path)> Describe = UdevName;
    std::function<PortRights(const std::string& path)> Rights = RightsOf;
};

/// The highest N of "ComN" that the application offers.
inline constexpr std::int32_t LastPortNumber = 127;

/// Returns all serial devices: Bluetooth ports, USB adapters, the ports of the board that have hardware, the targets of
/// the names in `serial/by-id` and of the pins, and the dangling ones among these. A port of the board is never opened,
/// because the machine's console may be on it; nor is a device that a program uses already.
std::vector<companion::PortRow> SerialPorts(const PortSurvey& survey = {});

} // namespace backends
