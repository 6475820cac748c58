// SPDX-License-Identifier: MIT
// A whole device without a window: the record of platform operations, filled.
#pragma once

#include "platform/common/failing_storage.h"
#include "platform/common/host_file_system.h"
#include "platform/common/line_database.h"
#include "platform/common/number_source.h"
#include "platform/common/settings_file.h"
#include "platform/headless/controls.h"
#include "platform/headless/font_server.h"
#include "platform/headless/serial_ports.h"
#include "platform/headless/services.h"
#include "view/platform/platform.h"

#include <array>
#include <map>
#include <optional>
#include <string>

namespace platform::headless {

/// What a device is to be. Whatever is left out is that of the profile of its type.
struct DeviceOptions {
    std::int32_t DeviceType = 0;
    std::optional<Text> OsVersion;
    Text User = u"user";
    std::optional<common::ScreenSize> Screen;
    std::string Root; ///< host folder that holds all of the device's storage
    std::vector<common::HostVolume> Volumes;
    std::string Settings; ///< host file; "settings.ini" in the root folder when empty
    bool RealClock = false;
    std::int64_t StartMoment = 0; ///< where a clock that is not the machine's starts
    std::map<std::int32_t, std::string> Ports;
};

class HeadlessPlatform {
public:
    HeadlessPlatform(const DeviceOptions& options, CommandSource& commands, Watcher& watcher);
    HeadlessPlatform(const HeadlessPlatform&) = delete;
    HeadlessPlatform& operator=(const HeadlessPlatform&) = delete;

    /// Loads the form and brings it to the front, as the start of the program does.
    void StartProgram();

    Focus focus;
    HeadlessClock clock;
    EventLoop loop;

    HeadlessForm form;
    HeadlessGrid grdTitle{focus, "grdTitle"};
    HeadlessGrid grdMain{focus, "grdMain"};
    HeadlessTextBox txtInputField{focus, "txtInputField"};
    HeadlessComboBox cboInputField{focus, "cboInputField"};
    HeadlessTextBox cbotxtInputField{focus, "cbotxtInputField"};
    HeadlessDatePicker dteInputField{focus, "dteInputField"};
    HeadlessListBox lstHoldMenu{focus, "lstHoldMenu"};
    HeadlessLabel lblStatus{focus, "lblStatus"};
    HeadlessScrollBar scrollBar;
    HeadlessTimer tmrBlue;
    HeadlessTimer tmrHoldEvent;
    HeadlessTimer tmrMenus;
    std::array<HeadlessMenuItem, 2> menuTitles;
    std::array<std::array<HeadlessMenuItem, MenuItemCount>, 2> menuItems; ///< of each menu, item i at i less 1

    HeadlessFonts fonts;
    HeadlessSystem system;
    HeadlessKeys keys;
    HeadlessSerial serial;
    HeadlessConnections connections;
    HeadlessTones tones;
    HeadlessBoxes boxes;
    common::NumberSource random;
    HeadlessRunTime runTime;

    common::DiskFaults faults; ///< the disk's
    common::HostVolumes volumes;
    common::HostFileSystem hostFiles;
    common::FailingFileSystem files;
    common::LineDatabase hostDatabases;
    common::FailingDatabase databases;
    common::SettingsFile settingsFile;
    common::FailingSettings settings;

    Platform record;

private:
    void WireEvents(Watcher& watcher);
    void DesignControls();
};

} // namespace platform::headless
