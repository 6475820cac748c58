// SPDX-License-Identifier: MIT
#include "platform/headless/headless_platform.h"

#include "app/form.h"
#include "app/start_up.h"

namespace platform::headless {

namespace {

constexpr std::int32_t LinkInterval = 500; // milliseconds
constexpr std::int32_t HoldInterval = 1000;
constexpr std::int32_t RepaintInterval = 100;

const Text DesignFont = u"AFPalm";
constexpr std::int32_t DesignFontSize = 8;

HeadlessClock ClockFor(const DeviceOptions& options) {
    return options.RealClock ? HeadlessClock() : HeadlessClock(options.StartMoment);
}

std::vector<common::HostVolume> VolumesFor(const DeviceOptions& options) {
    if (!options.Volumes.empty())
        return options.Volumes;
    return {common::ProfileOfType(options.DeviceType).Volume};
}

HeadlessSystem SystemFor(const DeviceOptions& options) {
    const common::DeviceProfile& profile = common::ProfileOfType(options.DeviceType);
    const Text version = modStringTools::FromBytes(profile.OsVersion);
    return {options.DeviceType, options.OsVersion.value_or(version), options.User,
            options.Screen.value_or(profile.Screen)};
}

std::string SettingsFor(const DeviceOptions& options) {
    return options.Settings.empty() ? options.Root + "/settings.ini" : options.Settings;
}

std::array<MenuItem*, MenuItemCount> Pointers(std::array<HeadlessMenuItem, MenuItemCount>& items) {
    return {&items[0], &items[1], &items[2], &items[3], &items[4]};
}

} // namespace

HeadlessPlatform::HeadlessPlatform(const DeviceOptions& options, CommandSource& commands, Watcher& watcher)
    : clock(ClockFor(options)), loop(clock, commands), tmrBlue(loop, LinkInterval, true, frmQuorin::tmrBlue_Tick),
      tmrHoldEvent(loop, HoldInterval, false, frmQuorin::tmrHoldEvent_Tick),
      tmrMenus(loop, RepaintInterval, false, frmQuorin::tmrMenus_Tick), system(SystemFor(options)),
      keys(watcher, focus), serial(options.Ports, frmQuorin::serConnection_Receive), tones(watcher),
      boxes(loop, watcher), runTime(loop), volumes(VolumesFor(options)), hostFiles(common::PathMap(options.Root)),
      files(hostFiles, faults), hostDatabases(common::PathMap(options.Root)), databases(hostDatabases, faults),
      settingsFile(SettingsFor(options)), settings(settingsFile, faults), record{form,
                                                                                 grdTitle,
                                                                                 grdMain,
                                                                                 txtInputField,
                                                                                 cboInputField,
                                                                                 cbotxtInputField,
                                                                                 dteInputField,
                                                                                 lstHoldMenu,
                                                                                 lblStatus,
                                                                                 scrollBar,
                                                                                 tmrBlue,
                                                                                 tmrHoldEvent,
                                                                                 tmrMenus,
                                                                                 menuTitles[0],
                                                                                 menuTitles[1],
                                                                                 Pointers(menuItems[0]),
                                                                                 Pointers(menuItems[1]),
                                                                                 FormColours(),
                                                                                 fonts,
                                                                                 system,
                                                                                 keys,
                                                                                 serial,
                                                                                 connections,
                                                                                 tones,
                                                                                 boxes,
                                                                                 settings,
                                                                                 clock,
                                                                                 random,
                                                                                 runTime,
                                                                                 volumes,
                                                                                 files,
                                                                                 databases} {
    loop.Listen(serial);
    loop.Listen(keys);
    loop.Listen(grdTitle);
    loop.Listen(grdMain);
    DesignControls();
    WireEvents(watcher);
}

void HeadlessPlatform::DesignControls() {
    for (HeadlessGrid* grid : {&grdTitle, &grdMain}) {
        grid->SetFontName(DesignFont);
        grid->SetFontSize(DesignFontSize);
    }
    const common::ScreenSize screen = {static_cast<std::int32_t>(system.WorkArea().Width),
                                       static_cast<std::int32_t>(system.WorkArea().Height)};
    form.SetBounds({0, 0, static_cast<float>(screen.Width) * form.TwipsPerPixelX(),
                    static_cast<float>(screen.Height) * form.TwipsPerPixelY()});
}

void HeadlessPlatform::WireEvents(Watcher& watcher) {
    faults.WritingFailed = [&watcher](const Text& name, ErrorNumber error) { watcher.WritingFailed(name, error); };
    grdMain.Follower = &grdTitle;
    grdMain.TurnsPages = system.DeviceType() == 1;
    grdMain.Moved = frmQuorin::grdMain_RowColChange;
    grdMain.DrawCell = frmQuorin::grdMain_DrawCell;
    grdTitle.Moved = frmQuorin::grdTitle_RowColChange;
    grdTitle.DrawCell = frmQuorin::grdTitle_DrawCell;
    grdTitle.GotFocus = frmQuorin::grdTitle_GotFocus;
    lstHoldMenu.LostFocus = frmQuorin::lstHoldMenu_LostFocus;
    txtInputField.GotFocus = frmQuorin::txtInputField_GotFocus;
    txtInputField.LostFocus = frmQuorin::txtInputField_LostFocus;
    txtInputField.Change = frmQuorin::txtInputField_Change;
    cboInputField.GotFocus = frmQuorin::cboInputField_GotFocus;
    cboInputField.LostFocus = frmQuorin::cboInputField_LostFocus;
    lblStatus.Painted = [this, &watcher] { watcher.StatusShown(lblStatus.Caption()); };
    lblStatus.Hidden = [&watcher] { watcher.StatusHidden(); };
}

void HeadlessPlatform::StartProgram() {
    Install(&record);
    modQuorin::ResetModules();
    frmQuorin::Form_Load();
    frmQuorin::Form_Activate();
    loop.HandleDue();
}

} // namespace platform::headless
