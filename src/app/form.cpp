// SPDX-License-Identifier: MIT
#include "src/app/form.h"

#include "src/app/commands.h"
#include "src/app/keys.h"
#include "src/app/lists.h"
#include "src/app/start_up.h"
#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "src/view/input_fields.h"
#include "src/view/layout.h"
#include "src/view/painting.h"
#include "src/view/platform/device_traits.h"
#include "src/view/platform/keys.h"
#include "src/view/platform/platform.h"
#include "src/view/prompt.h"
#include "src/view/screen_table.h"

namespace frmQuorin {

using platform::Device;
using platform::Key;

namespace {

constexpr std::int64_t SleepSeconds = 2; // a longer gap between two ticks means that the device slept

void ShowHoldMenuOfTitle() {
    modQuorin::ShowHoldMenu(modQuorin::Screens.CurrentScreen, Device().grdTitle.Row(), Device().grdTitle.Col());
}

} // namespace

void Form_Load() {
    modQuorin::InitDisplay();
}

void Form_Activate() {
    if (Form.FormInitialised)
        return;
    modQuorin::InitApplication();
    Form.FormInitialised = true;
}

void Form_QueryUnload(bool& cancel, UnloadMode unloadMode) {
    if (unloadMode != UnloadMode::TitleBar && unloadMode != UnloadMode::Program)
        return;
    cancel = true;
    modQuorin::GoBack();
}

void Form_Unload() {
    modQuorin::ReleaseHardwareKeys();
}

void Form_KeyDown(std::int32_t& keyCode, std::int32_t shift) {
    modQuorin::KeyDownHandler(keyCode, shift);
}

void Form_KeyUp(std::int32_t& keyCode, std::int32_t shift) {
    modQuorin::KeyUpHandler(keyCode, shift);
}

void Form_KeyPress(std::int32_t& character) {
    if (!platform::Traits().EnterReachesField && (Key{character} == Key::Enter || Key{character} == Key::Escape))
        character = 0;
}

void grdMain_Press() {
    Device().tmrHoldEvent.SetEnabled(true);
}

void grdMain_Release() {
    Device().tmrHoldEvent.SetEnabled(false);
    if (!Form.HoldEventFired)
        modQuorin::SelectCurrentRow();
    Form.HoldEventFired = false;
}

void grdMain_RowColChange() {
    if (modPDAUI::Grids.GridLocked)
        return;
    modPDAUI::ScrollRowIntoView();
    modQuorin::RowChanged(modQuorin::Screens.CurrentScreen);
}

void grdMain_DrawCell(platform::CellCanvas& canvas, const platform::PaintedCell& cell) {
    modPDAUI::DrawMainCell(canvas, cell);
}

void grdTitle_GotFocus() {
    if (Device().grdMain.Enabled() && Device().grdMain.Visible())
        Device().grdMain.SetFocus();
}

void grdTitle_Release() {
    ShowHoldMenuOfTitle();
    Device().grdMain.SetFocus();
}

void grdTitle_RowColChange() {
    ShowHoldMenuOfTitle();
}

void grdTitle_DrawCell(platform::CellCanvas& canvas, const platform::PaintedCell& cell) {
    modPDAUI::PaintTitleCell(canvas, cell);
}

void lstHoldMenu_Click() {
    modQuorin::HoldMenuClicked();
}

void lstHoldMenu_LostFocus() {
    Device().lstHoldMenu.SetVisible(false);
    modQuorin::HideHoldMenu();
}

void mnuButton1_Click() {
    modQuorin::MenuTitleClick(1);
}

void mnuButton2_Click() {
    modQuorin::MenuTitleClick(2);
}

void mnuButtonO1_Click(std::int32_t index) {
    modQuorin::MenuClick(1, index);
}

void mnuButtonO2_Click(std::int32_t index) {
    modQuorin::MenuClick(2, index);
}

void SoftKey1Pressed() {
    modQuorin::MenuClick(1, 0);
}

void SoftKey2Pressed() {
    modQuorin::MenuClick(2, 0);
}

void serConnection_Receive() {
    modBluetooth::HandleBlueOnComm();
}

void tmrBlue_Tick() {
    const std::int64_t now = Device().clock.SteadySeconds();
    const bool slept = modBluetooth::Ports.LinkOpen && now - Form.lastTimerEvent > SleepSeconds;
    Form.lastTimerEvent = now;
    if (slept)
        modBluetooth::Receive.LinkState = modBluetooth::LinkPhase::Reset;
    else
        modBluetooth::HandleBlueTimer();
}

void tmrHoldEvent_Tick() {
    modQuorin::HoldTimerFired();
}

void tmrMenus_Tick() {
    modPDAUI::HandleRepaintTimer();
}

void txtInputField_GotFocus() {
    modPDAUI::TextFieldGotFocus();
}

void txtInputField_LostFocus() {
    modPDAUI::TextFieldLostFocus();
}

void txtInputField_Change() {
    modPDAUI::TextFieldChanged();
}

void cboInputField_GotFocus() {
    modPDAUI::ComboFieldGotFocus();
}

void cboInputField_LostFocus() {
    modPDAUI::ComboFieldLostFocus();
}

void dteInputField_Closed() {
    modPDAUI::AcceptInput();
}

void myCsys_AppBackground() {
}

void myCsys_AppMaximized() {
}

void myCsys_AppMinimized() {
}

void mykb_statechanged(std::int16_t state, std::int32_t left, std::int32_t top, std::int32_t width,
                       std::int32_t height) {
    modPDAUI::Display.KeyboardRect = {.State = state, .Left = left, .Top = top, .Width = width, .Height = height};
    modPDAUI::LayoutFormAgain();
}

} // namespace frmQuorin
