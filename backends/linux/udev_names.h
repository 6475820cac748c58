// SPDX-License-Identifier: MIT
#pragma once

#include "companion/ports/port_table.h"

#include <functional>
#include <string>

namespace backends {

/// Returns a property of a device by its key; empty if it has none.
using DeviceProperty = std::function<std::string(const char* key)>;

/// Returns the names from the system's table of hardware, or those that the device reports if the table lacks it.
companion::DeviceName NameFromProperties(const DeviceProperty& property);

/// Returns udev's name of the device at a path. The device is not opened.
companion::DeviceName UdevName(const std::string& path);

} // namespace backends
