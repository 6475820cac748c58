// SPDX-License-Identifier: MIT
// Maps a port number to a device of the machine. Nothing is opened or changed here.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace backends {

/// Returns the path of the device that "ComN" means when the number is not pinned to a path:
///  1. `rfcomm` N-1, a Bluetooth port that was bound;
///  2. else the N-th USB adapter, in the order of UsbAdapters;
///  3. else none: the path is empty. It is also empty for a number below 1.
/// A port of the board is none of them: it may be the machine's console, so that a person has to choose it.
/// Only character devices and links to them count. Each kind is numbered by itself: with an rfcomm0 and one adapter,
/// Com1 is the Bluetooth port, Com2 is nothing, and the adapter is available only by pinning it. So a number
/// that means the second adapter still means it after a Bluetooth port is bound or released.
std::string PortPath(std::int32_t number, const std::string& deviceFolder = "/dev");

/// Returns the paths of the USB adapters, `ttyUSB` before `ttyACM`, each in the order of their numbers: ttyUSB10 comes
/// after ttyUSB9.
std::vector<std::string> UsbAdapters(const std::string& deviceFolder = "/dev");

/// Returns the paths of all ports that come and go: bound Bluetooth ports and USB adapters.
std::vector<std::string> Adapters(const std::string& deviceFolder = "/dev");

/// Returns the paths of the ports of the board that have hardware: a system also has nodes for those that are missing.
std::vector<std::string> BoardPorts(const std::string& deviceFolder = "/dev", const std::string& systemFolder = "/sys");

/// Returns the paths of all serial devices, and the names in `serial/by-id`. No device is opened.
std::vector<std::string> PortNames(const std::string& deviceFolder = "/dev");

/// Returns the paths of all character devices whose name is a stem and a number, in the order of the numbers.
std::vector<std::string> DevicesCalled(const std::string& stem, const std::string& deviceFolder);

bool IsCharacterDevice(const std::string& path);

/// True if a path is a port of the board, or leads to one.
bool IsBoardPort(const std::string& path);

} // namespace backends
