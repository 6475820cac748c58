// SPDX-License-Identifier: MIT
// A whole device: everything that back-ends have in common. A back-end adds the controls, the fonts, and the Hand that
// operates them.
#pragma once

#include "backends/files/host_file_system.h"
#include "backends/files/line_database.h"
#include "backends/files/settings_file.h"
#include "backends/loop/form_controls.h"
#include "backends/loop/form_onlooker.h"
#include "backends/loop/hand.h"
#include "backends/loop/serial_ports.h"
#include "backends/loop/services.h"
#include "backends/simulated/failing_storage.h"
#include "backends/simulated/number_source.h"
#include "companion/readings.h"

#include <optional>
#include <string>

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

class BackEnd : public Hand {
public:
    BackEnd(const DeviceOptions& options, Pump& pump, CommandSource& commands, Watcher& watcher);
    BackEnd(const BackEnd&) = delete;
    BackEnd& operator=(const BackEnd&) = delete;
    ~BackEnd();

    /// Loads the form and brings it to the front, as the start of the program does.
    void StartProgram();

    /// The controls. They live as long as the back-end.
    virtual const Controls& Seen() const = 0;

    Focus focus;
    DeviceClock clock;
    EventLoop loop;
    LoopTimer tmrBlue;
    LoopTimer tmrHoldEvent;
    LoopTimer tmrMenus;

    DeviceSystem system;
    DeviceKeys keys;
    DeviceSerial serial;
    SimulatedConnections connections;
    WatchedTones tones;
    NumberSource random;
    LoopRunTime runTime;

    DiskFaults faults; ///< simulated failures of the disk
    HostVolumes volumes;
    HostFileSystem hostFiles;
    FailingFileSystem files;
    LineDatabase hostDatabases;
    FailingDatabase databases;
    SettingsFile settingsFile;
    FailingSettings settings;

    FormOnlooker onlooker; ///< holds the notices
    companion::Readings readings;

protected:
    /// Called before a round of events: each round has its own time to wait for other programs.
    void BeginOperation();
    /// Returns the record of platform operations over these controls.
    Platform RecordOf(const Controls& controls);
    /// Sets the design-time properties of the controls and the handlers that the controls of every back-end raise.
    void DesignControls(const Controls& controls);

    virtual Platform& Record() = 0;
    /// Called when the form is loaded and is to appear on the screen.
    virtual void ShowForm() {}

private:
    void HoldLinkUnderPile(DeviceBoxes& boxes);

    ConnectionService& Connections_;
};

} // namespace backends
