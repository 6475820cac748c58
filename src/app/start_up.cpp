// SPDX-License-Identifier: MIT
#include "app/start_up.h"

#include "app/lists.h"
#include "app/menus.h"
#include "app/screens.h"
#include "blob/decoding.h"
#include "blob/framing.h"
#include "drivers/downloads.h"
#include "drivers/registry.h"
#include "drivers/selection.h"
#include "drivers/unsaved_record.h"
#include "link/mailbox.h"
#include "link/ports.h"
#include "link/receive.h"
#include "storage/keyed_tables.h"
#include "storage/settings.h"
#include "storage/volumes.h"
#include "view/display_state.h"
#include "view/grids.h"
#include "view/inf_fields.h"
#include "view/input_fields.h"
#include "view/layout.h"
#include "view/menu_table.h"
#include "view/navigation.h"
#include "view/platform/platform.h"
#include "view/prompt.h"
#include "view/screen_table.h"
#include "view/sound.h"

#include <limits>

namespace modQuorin {

using modPDAUI::Display;
using platform::Device;

namespace {

constexpr std::int32_t GreySelection = 0xD0D0D0; // colours are 0xBBGGRR
constexpr std::int32_t BlackText = 0x000000;
constexpr std::int32_t GreenFrame = 0x00FF00;

constexpr std::int32_t LowResolution = 160; // pixels of the first Palm OS screens

constexpr std::int32_t PalmKeys[] = {308, 309, 516, 517, 518, 519, 33, 34, 276, 520, 264, 266, 267, 1280, 261};
constexpr std::int32_t PalmSelectKey = 310; // given back though it is never grabbed, which does no harm
constexpr std::int32_t WindowsMobileKey = 2;

void SetGridFont(const Text& name) {
    Device().grdMain.SetFontName(name);
}

void InitPalm() {
    Display.SoftKeyMenus = true;
    for (const std::int32_t key : PalmKeys)
        Device().hardwareKeys.Grab(key);
    if (Device().myCsys.ScreenDimension() <= LowResolution)
        return; // the font stays as designed
    SetGridFont(u"AFPalmHR");
    Display.UiScale = 2;
}

void InitByDevice() {
    switch (Device().myCsys.DeviceType()) {
    case 0:
        SetGridFont(u"Tahoma");
        break;
    case 1:
        InitPalm();
        break;
    case 3:
        Display.SoftKeyMenus = IsSoftKeyPlatform();
        SetGridFont(u"Tahoma");
        break;
    case 5:
    case 9:
        Display.SoftKeyMenus = true;
        SetGridFont(u"Nokia Sans S60");
        break;
    case 6:
        SetGridFont(u"AFSE UIQ Standard");
        break;
    case 7:
        Display.SoftKeyMenus = IsSoftKeyPlatform();
        Device().hardwareKeys.Grab(WindowsMobileKey);
        SetGridFont(u"Microsoft Sans Serif CMF");
        break;
    default:
        break;
    }
}

void CopyFontToTitle() {
    const auto& grdMain = Device().grdMain;
    Device().grdTitle.SetFontName(grdMain.FontName());
    Device().grdTitle.SetFontSize(grdMain.FontSize());
}

} // namespace

void ResetModules() {
    platform::BeforeFailure = nullptr;
    Rescue = {};
    modFileSystem::Storage = {};
    modFileSystem::ResetSlots();
    modFileSystem::Table = {};
    modBLob::Decoder = {};
    modBLob::Framing = {};
    modBluetooth::Ports = {};
    modBluetooth::Receive = {};
    modBluetooth::Mailbox = {};
    modPDAUI::Display = {};
    modPDAUI::Grids = {};
    modPDAUI::Input = {};
    modPDAUI::Prompt = {};
    modAudio::Sound = {};
    frmQuorin::Form = {};
    Paths = {};
    Screens = {};
    ForgetScreenIds();
    Menus = {};
    Inf = {};
    Selection = {};
    Registry = {};
    Downloads = {};
    Lists = {};
}

void InitDisplay() {
    Display.SelectedBackColor = GreySelection;
    Display.SelectedTextColor = BlackText;
    Display.SelectedFrameColor = GreenFrame;
    modPDAUI::LayoutForm(Device().myCsys.DeviceType() == 0);
    Display.UiScale = 1;
    InitByDevice();
    CopyFontToTitle();
    Display.DefaultFontName = Device().grdMain.FontName();
    Display.DefaultFontSize = Device().grdMain.FontSize();
    AddInputMenus();
    AddInputScreens();
}

void InitApplication() {
    SetFilePaths();
    Display.ColourOn = GetSetting(u"COLOUR", u"-1") == u"-1";
    AddApplicationMenus();
    AddApplicationScreens();
    Screens.PreviousScreen = 0;
    Screens.CurrentScreen = ScrMain;
    Inf = {};
    platform::BeforeFailure = RescueRecord;
    LoadFontSize();
    ShowScreen(Screens.CurrentScreen);
}

void LoadFontSize() {
    auto& grdMain = Device().grdMain;
    const std::int32_t designed = grdMain.FontSize();
    const auto stored = modStringTools::NumberFromText(GetSetting(u"FONTSIZE", modStringTools::NumberText(designed)));
    constexpr std::int32_t Largest = std::numeric_limits<std::int16_t>::max();
    const bool usable = stored && *stored >= 1 && *stored <= Largest;
    grdMain.SetFontSize(usable ? *stored : designed);
    Device().grdTitle.SetFontSize(grdMain.FontSize());
}

bool IsSoftKeyPlatform() {
    const std::int32_t type = Device().myCsys.DeviceType();
    if (type != 7 && type != 3)
        return false;
    const Text version = Device().myCsys.VersionText();
    const auto major = modStringTools::NumberFromText(version.substr(0, version.find(u'.')));
    return major && *major >= 5;
}

void ReleaseHardwareKeys() {
    auto& keys = Device().hardwareKeys;
    switch (Device().myCsys.DeviceType()) {
    case 1:
        keys.Release(PalmSelectKey);
        for (const std::int32_t key : PalmKeys)
            keys.Release(key);
        break;
    case 7:
        keys.Release(WindowsMobileKey);
        break;
    default:
        break;
    }
}

} // namespace modQuorin
