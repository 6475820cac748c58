// SPDX-License-Identifier: MIT
// The options that say what a device is to be: described, read and understood in one place for all programs.
#pragma once

#include "apps/options/command_line.h"
#include "backends/loop/back_end.h"

#include <optional>
#include <string>
#include <vector>

namespace apps {

/// How a port may be called in front of its path.
enum class PortNaming {
    Number,      ///< "3"
    NumberOrCom, ///< "Com3" as well, in any case
};

/// What differs from program to program.
struct DeviceDefaults {
    std::string Device;   ///< as it would be said
    std::string Root;     ///< for people
    std::string Settings; ///< for people
    PortNaming Ports = PortNaming::Number;
};

/// What a command line says of the device, before it is looked at.
struct DeviceWords {
    explicit DeviceWords(DeviceDefaults defaults) : Defaults(std::move(defaults)), Device(Defaults.Device) {}

    DeviceDefaults Defaults;
    std::string Device;
    std::optional<std::string> OsVersion;
    std::string User = "user";
    std::string Screen;
    std::string Root;
    std::vector<std::string> Volumes;
    std::string Settings;
    std::vector<std::string> Ports;
};

/// Every option but --port.
void AddDeviceOptions(CLI::App& app, DeviceWords& words);
void AddPortOption(CLI::App& app, DeviceWords& words, const std::string& help);

/// Root and settings stay empty where nothing is said of them. Inside of ReadCommandLine, as it may Refuse.
backends::DeviceOptions UnderstoodDevice(const DeviceWords& words);

/// A row a kind of device: its name, type, screen, version and volume.
std::string DeviceTable();

} // namespace apps
