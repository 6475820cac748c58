// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace apps {

/// Returns the name by which other tools know this device, if a person has not given it one: that of the machine; empty
/// if it has none.
std::string NameOfDevice();

} // namespace apps
