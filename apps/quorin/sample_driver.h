// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace quorin {

/// The driver package samples/climate.qvd to the byte. The build puts it into the program.
std::string_view SampleDriver();

} // namespace quorin
