// SPDX-License-Identifier: MIT
// A device on a host with POSIX files: its storage beneath one folder, its settings, its serial port.
#pragma once

#include "backends/files/host_file_system.h"
#include "backends/files/host_volumes.h"
#include "backends/files/line_database.h"
#include "backends/files/settings_file.h"
#include "backends/host/limits_file.h"
#include "backends/loop/back_end.h"
#include "backends/serial/host_ports.h"
#include "backends/simulated/failing_storage.h"

#include <optional>
#include <string>
#include <vector>

namespace backends {

/// The properties of a device. Whatever is left out comes from the profile of its type.
struct DeviceOptions {
    std::int32_t DeviceType = 0;
    std::optional<Text> OsVersion;
    Text User = u"user";
    std::optional<ScreenSize> Screen;
    std::string Root; ///< host folder that holds all of the device's storage
    std::vector<HostVolume> Volumes;
    std::string Settings; ///< host file; "settings.ini" in the root folder when empty
    bool RealClock = false;
    std::int64_t StartMoment = 0;             ///< start of the virtual clock, in seconds (clock.h)
    PortPaths Ports;                          ///< empty for simulated ports
    ConnectionService* Connections = nullptr; ///< of the machine; null for simulated ones
};

/// Everything of the host that a back-end is given by reference.
class HostDevice {
public:
    /// Creates the root folder and the folders of the volumes, except for the one of a card that is out.
    explicit HostDevice(const DeviceOptions& options);
    HostDevice(const HostDevice&) = delete;
    HostDevice& operator=(const HostDevice&) = delete;
    ~HostDevice() = default;

    /// Returns what BackEnd is built from.
    DeviceParts Parts();

    DiskFaults faults; ///< simulated failures of the disk
    HostVolumes volumes;
    HostFileSystem hostFiles;
    FailingFileSystem files;
    LineDatabase hostDatabases;
    FailingDatabase databases;
    SettingsFile settingsFile;
    FailingSettings settings;
    LimitsFile limits; ///< beside the settings

    HostPorts ports;
    DeviceSerial serial;
    SimulatedConnections connections;

private:
    DeviceSystem System_;
    DeviceClock Clock_;
    ConnectionService& Connections_; ///< of the machine, or the simulated ones
};

} // namespace backends
