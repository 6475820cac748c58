// SPDX-License-Identifier: MIT
// The options that describe the device, with their help and their parsing, for all programs.
#pragma once

#include "apps/options/command_line.h"
#include "backends/host/host_device.h"

#include <optional>
#include <string>
#include <vector>

namespace apps {

/// The defaults that differ from program to program.
struct DeviceDefaults {
    std::string Device;   ///< as it would be given on the command line
    std::string Root;     ///< text for --help
    std::string Settings; ///< text for --help
};

/// The texts that a command line gives for the device, not yet checked.
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

/// Adds every option but --port.
void AddDeviceOptions(CLI::App& app, DeviceWords& words);
/// `without` says, for --help, what a port is that the option does not name.
void AddPortOption(CLI::App& app, DeviceWords& words, const std::string& without);

/// Returns the checked options. Root and settings are empty if they were not given. Only for use within
/// ReadCommandLine, because it may call Refuse.
backends::DeviceOptions UnderstoodDevice(const DeviceWords& words);

/// Gives a device without a root folder those of the window: its root folder and its settings.
void UseThoseOfTheWindow(backends::DeviceOptions& device);

/// Returns the kinds of addresses for --port, a line each.
std::string AddressHelp();

/// Returns a row for each kind of device: its name, type, screen, version and volume.
std::string DeviceTable();

} // namespace apps
