// SPDX-License-Identifier: MIT
// Maps a port number to a device of the machine. Nothing is opened or changed here.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace backends {

/// The device that "ComN" means when the number is not pinned to a path:
///  1. `rfcomm` N-1, a Bluetooth port that was bound;
///  2. the N-th USB adapter, as UsbAdapters counts them;
///  3. `ttyS` N-1, a port of the board;
///  4. none, and the path is empty; so it is for a number below 1.
/// Only character devices count, and links to them. Each kind is counted for itself: with an rfcomm0 and one adapter
/// Com1 is the Bluetooth port, Com2 is ttyS1 or nothing, and the adapter is to be had by pinning it. So a number that
/// means the second adapter goes on meaning it when a Bluetooth port is bound or released.
std::string PortPath(std::int32_t number, const std::string& deviceFolder = "/dev");

/// The paths of the USB adapters there are, `ttyUSB` before `ttyACM`, each in the order of their numbers: ttyUSB10
/// comes after ttyUSB9.
std::vector<std::string> UsbAdapters(const std::string& deviceFolder = "/dev");

/// The paths of all character devices that are called by a stem and a number, in the order of the numbers.
std::vector<std::string> DevicesCalled(const std::string& stem, const std::string& deviceFolder);

bool IsCharacterDevice(const std::string& path);

/// True if a path is a port of the board, or leads to one.
bool IsBoardPort(const std::string& path);

} // namespace backends
