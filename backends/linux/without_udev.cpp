// SPDX-License-Identifier: MIT
#include "backends/linux/udev_names.h"

namespace backends {

/// For a program without shared libraries: udev's has no other form. Ports are listed by path alone.
companion::DeviceName UdevName(const std::string&) {
    return {};
}

} // namespace backends
