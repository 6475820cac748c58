// SPDX-License-Identifier: MIT
// What a demonstration needs of the device: a driver, and a port to listen at.
#pragma once

#include <cstdint>

namespace quorin {

/// The port at which the demonstration expects its instrument.
inline constexpr std::int32_t DemoPort = 1;

/// Installs the sample driver where the device in use keeps its drivers, as an installation leaves it, unless there is
/// a driver already; and sets the port unless one was ever chosen. For a program that has started and shows its main
/// screen. A storage that is full stops the program as with any writing, and the next preparation makes up for it.
void PrepareDemo();

} // namespace quorin
