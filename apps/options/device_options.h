// SPDX-License-Identifier: MIT
// The options that say what a device is to be: described, read and understood in one place for all programs.
#pragma once

#include "apps/options/command_line.h"
#include "backends/loop/back_end.h"

#include <optional>
#include <string>
#include <vector>

namespace apps {

/// What differs from program to program.
struct DeviceDefaults {
    std::string Device;   ///< as it would be said
    std::string Root;     ///< for people
    std::string Settings; ///< for people
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
/// `without` says what a port is that the option does not name.
void AddPortOption(CLI::App& app, DeviceWords& words, const std::string& without);

/// Root and settings stay empty where nothing is said of them. Inside of ReadCommandLine, as it may Refuse.
backends::DeviceOptions UnderstoodDevice(const DeviceWords& words);

/// The kinds of addresses that --port takes, a line each.
std::string AddressHelp();

/// A row a kind of device: its name, type, screen, version and volume.
std::string DeviceTable();

} // namespace apps
