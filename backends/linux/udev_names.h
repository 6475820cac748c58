// SPDX-License-Identifier: MIT
#pragma once

#include "companion/ports/port_table.h"

#include <functional>
#include <string>

namespace backends {

/// A property of a device by its key; empty when it has none.
using DeviceProperty = std::function<std::string(const char* key)>;

/// The names in the words of the system's table of hardware, and in the device's own where that does not know it.
companion::DeviceName NameFromProperties(const DeviceProperty& property);

/// Returns udev's name of the device at a path. The device is not opened.
companion::DeviceName UdevName(const std::string& path);

} // namespace backends
