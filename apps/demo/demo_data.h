// SPDX-License-Identifier: MIT
// The data of a demonstration: a driver, and a port.
#pragma once

#include "src/text/text.h"

#include <cstdint>

namespace apps {

/// The port of the demonstration's instrument.
inline constexpr std::int32_t DemoPort = 1;

/// Installs the sample driver on the device, as an ordinary installation would, unless a driver is installed already;
/// and sets the port unless one was ever chosen. Requires that the program has started and shows its main screen. If
/// the storage is full, the program stops as after any failed write, and the next call completes the preparation.
void PrepareDemo();

/// Deletes every file of the data folder: drivers, downloads and their register. Returns an empty text, or which file
/// could not be deleted and why. Requires that the form shows its main screen; PrepareDemo has to follow.
Text EmptyDemo();

} // namespace apps
