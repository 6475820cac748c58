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

/// Tries a device and gives the value of errno, 0 when all is well. Open: opened without waiting and closed at once,
/// ENOTTY when it is no terminal. LookOnly: its permissions are looked at, as they always are for a port of the board,
/// whatever is asked.
int TryPort(const std::string& path, PortTrial trial);

/// Where a survey looks, and by what means.
struct PortSurvey {
    std::map<std::int32_t, PortAddress> Pinned;
    std::string DeviceFolder = "/dev";
    std::string SystemFolder = "/sys";
    std::string ProcessFolder = "/proc";
    std::string LockFolder = "/run/lock";
    std::function<int(const std::string& path, PortTrial trial)> Try = TryPort;
    std::function<companion::DeviceName(const std::string& path)> Describe = UdevName;
    std::function<PortRights(const std::string& path)> Rights = RightsOf;
};

/// All serial devices: Bluetooth ports, USB adapters, the ports of the board that have hardware behind them, what the
/// names in `serial/by-id` and the pins lead to, and those of them that lead nowhere. Ports of the board are never
/// opened, since the machine's console may be on one; nor are those that somebody uses already.
std::vector<companion::PortRow> SerialPorts(const PortSurvey& survey = {});

} // namespace backends
