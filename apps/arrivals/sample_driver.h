// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace apps {

/// Returns the driver package samples/climate.qvd, byte for byte. The build puts it into the program.
std::string_view SampleDriver();

} // namespace apps
