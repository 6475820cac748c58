// SPDX-License-Identifier: MIT
#include "src/app/preferences.h"

#include "src/app/lists.h"
#include "src/drivers/installation.h"
#include "src/storage/settings.h"
#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "src/view/navigation.h"
#include "src/view/platform/device_traits.h"
#include "src/view/platform/platform.h"
#include "src/view/prompt.h"

namespace modQuorin {

using modPDAUI::AddGridRow;
using modPDAUI::Display;
using platform::Device;

namespace {

constexpr std::int32_t LargestFont = 30;
constexpr std::int32_t SmallestFont = 5;
constexpr std::int32_t ZoomStep = 5; // a new size must exceed the old one by more than this

bool HasOneFontSize() {
    return !platform::Traits().FineGridFont.empty() && Display.UiScale == 2;
}

} // namespace

void FillPreferences() {
    auto& grdMain = Device().grdMain;
    Device().grdTitle.SetCell(0, 0, u"Preferences");
    grdMain.SetRows(1);
    grdMain.SetCell(0, 0, u""); // filling again starts with an empty list
    if (!HasOneFontSize())
        AddGridRow(u"Zoom");
    AddGridRow(u"Select Storage Volume...");
    AddGridRow(u"Bluetooth Serial Setup...");
    AddGridRow(Display.ColourOn ? u"Toggle Colour: On" : u"Toggle Colour: Off");
    AddGridRow(u"Enter Custom Serial ID...");
    AddGridRow(u"Debug");
    if (grdMain.Rows() - 1 >= Lists.PreferenceRow)
        grdMain.SetRow(Lists.PreferenceRow);
    modPDAUI::RepaintGridsSoon();
}

bool LeavePreferences() {
    SetFilePaths();
    if (platform::Traits().WritesInfoFile)
        WriteInfoFile();
    GotoScreen(ScrMain);
    return true;
}

void ZoomGridFont() {
    auto& grdMain = Device().grdMain;
    const std::int32_t old = grdMain.FontSize();
    for (std::int32_t size = old + 1; size <= LargestFont; ++size) {
        grdMain.SetFontSize(size);
        if (size > old + ZoomStep && grdMain.FontSize() == size)
            break;
    }
    if (grdMain.FontSize() == old)
        grdMain.SetFontSize(SmallestFont);
    Device().grdTitle.SetFontName(grdMain.FontName());
    Device().grdTitle.SetFontSize(grdMain.FontSize());
    GotoScreen(Screens.CurrentScreen);
}

void SaveFontSize() {
    SaveSetting(u"FONTSIZE", modStringTools::NumberText(Device().grdMain.FontSize()));
}

void ToggleColour() {
    Display.ColourOn = !Display.ColourOn;
    SaveSetting(u"COLOUR", Display.ColourOn ? u"-1" : u"0");
    FillScreen(Screens.CurrentScreen);
}

void EnterSerialId() {
    Text answer;
    modPDAUI::AskForLine(u"Serial ID", answer);
    if (!answer.empty())
        SaveSetting(u"ComPort", answer);
}

} // namespace modQuorin
