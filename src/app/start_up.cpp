// SPDX-License-Identifier: MIT
#include "src/app/start_up.h"

#include "src/app/lists.h"
#include "src/app/menus.h"
#include "src/app/screens.h"
#include "src/blob/decoding.h"
#include "src/blob/framing.h"
#include "src/blob/verdicts.h"
#include "src/drivers/downloads.h"
#include "src/drivers/registry.h"
#include "src/drivers/selection.h"
#include "src/drivers/unsaved_record.h"
#include "src/link/mailbox.h"
#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"
#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "src/view/inf_fields.h"
#include "src/view/input_fields.h"
#include "src/view/layout.h"
#include "src/view/menu_table.h"
#include "src/view/navigation.h"
#include "src/view/platform/application.h"
#include "src/view/platform/device_traits.h"
#include "src/view/platform/platform.h"
#include "src/view/prompt.h"
#include "src/view/screen_table.h"
#include "src/view/sound.h"

#include <limits>

namespace modQuorin {

using modPDAUI::Display;
using platform::Device;
using platform::SoftKeys;

namespace {

constexpr std::int32_t GreySelection = 0xD0D0D0; // colours are 0xBBGGRR
constexpr std::int32_t BlackText = 0x000000;
constexpr std::int32_t GreenFrame = 0x00FF00;

constexpr std::int32_t LowResolution = 160; // pixels of the first Palm OS screens

void InitByDevice() {
    const platform::DeviceTraits& traits = platform::Traits();
    Display.SoftKeyMenus = traits.Menus == SoftKeys::Always || IsSoftKeyPlatform();
    for (const platform::Key key : traits.GrabbedKeys)
        Device().hardwareKeys.Grab(CodeOf(key));
    const bool fine = !traits.FineGridFont.empty() && Device().myCsys.ScreenDimension() > LowResolution;
    if (fine)
        Display.UiScale = 2;
    const TextView font = fine ? traits.FineGridFont : traits.GridFont;
    if (!font.empty())
        Device().grdMain.SetFontName(Text(font));
}

void CopyFontToTitle() {
    const auto& grdMain = Device().grdMain;
    Device().grdTitle.SetFontName(grdMain.FontName());
    Device().grdTitle.SetFontSize(grdMain.FontSize());
}

} // namespace

void ResetModules() {
    platform::Stop = {};
    Rescue = {};
    modFileSystem::Storage = {};
    modFileSystem::ResetSlots();
    modFileSystem::Table = {};
    modBLob::Decoder = {};
    modBLob::Framing = {};
    modBLob::CutBlob.clear();
    modBluetooth::Ports = {};
    modBluetooth::Receive = {};
    modBluetooth::Mailbox = {};
    modPDAUI::Display = {};
    modPDAUI::Grids = {};
    modPDAUI::Input = {};
    modPDAUI::FieldChanged = nullptr;
    modPDAUI::Prompt = {};
    modAudio::Sound = {};
    frmQuorin::Form = {};
    Paths = {};
    ApplicationName.clear();
    ResetScreens();
    ResetMenus();
    Inf = {};
    Selection = {};
    Registry = {};
    Downloads = {};
    Lists = {};
}

void InitDisplay() {
    modPDAUI::FieldChanged = [] { modFileSystem::Table.RecordDirty = true; };
    Display.SelectedBackColor = GreySelection;
    Display.SelectedTextColor = BlackText;
    Display.SelectedFrameColor = GreenFrame;
    modPDAUI::LayoutForm(platform::Traits().HasWindow);
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
    platform::Stop.BeforeFailure = RescueRecord;
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
    if (platform::Traits().Menus != SoftKeys::FromVersion5)
        return false;
    const Text version = Device().myCsys.VersionText();
    const auto major = modStringTools::NumberFromText(version.substr(0, version.find(u'.')));
    return major && *major >= 5;
}

void ReleaseHardwareKeys() {
    const platform::DeviceTraits& traits = platform::Traits();
    for (const auto& keys : {traits.ReleasedKeys, traits.GrabbedKeys}) {
        for (const platform::Key key : keys)
            Device().hardwareKeys.Release(CodeOf(key));
    }
}

} // namespace modQuorin
