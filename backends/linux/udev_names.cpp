// SPDX-License-Identifier: MIT
#include "backends/linux/udev_names.h"

#include <algorithm>

namespace backends {

using companion::DeviceName;

namespace {

/// udev replaces each blank in a name reported by a device by `_`.
std::string WithBlanks(std::string text) {
    std::replace(text.begin(), text.end(), '_', ' ');
    return text;
}

std::string FirstKnown(const std::string& fromTable, const std::string& fromDevice) {
    return fromTable.empty() ? WithBlanks(fromDevice) : fromTable;
}

} // namespace

DeviceName NameFromProperties(const DeviceProperty& property) {
    return {FirstKnown(property("ID_VENDOR_FROM_DATABASE"), property("ID_VENDOR")),
            FirstKnown(property("ID_MODEL_FROM_DATABASE"), property("ID_MODEL")), property("ID_SERIAL_SHORT")};
}

} // namespace backends
