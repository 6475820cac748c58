// SPDX-License-Identifier: MIT
#include "platform/headless/headless_platform.h"

#include "app/form.h"
#include "platform/device/form_keys.h"

namespace platform::headless {

namespace {

device::MenuItems Pointers(std::array<HeadlessMenuItem, MenuItemCount>& items) {
    return {&items[0], &items[1], &items[2], &items[3], &items[4]};
}

} // namespace

HeadlessPlatform::HeadlessPlatform(const DeviceOptions& options, device::CommandSource& commands,
                                   device::Watcher& watcher)
    : BackEnd(options, static_cast<PollPump&>(*this), commands, watcher),
      boxes(loop, watcher), controls{form,
                                     grdTitle,
                                     grdMain,
                                     txtInputField,
                                     cboInputField,
                                     cbotxtInputField,
                                     dteInputField,
                                     lstHoldMenu,
                                     lblStatus,
                                     scrollBar,
                                     {&menuTitles[0], &menuTitles[1]},
                                     {Pointers(menuItems[0]), Pointers(menuItems[1])},
                                     fonts,
                                     boxes},
      record(RecordOf(controls)) {
    loop.Listen(grdTitle);
    loop.Listen(grdMain);
    DesignControls(controls);
    WireEvents(watcher);
}

void HeadlessPlatform::WireEvents(device::Watcher& watcher) {
    grdMain.Follower = &grdTitle;
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

void HeadlessPlatform::PressCell(std::int32_t row, std::int32_t col) {
    grdMain.SetFocus();
    grdMain.SetCurrentCell(row, col);
    frmQuorin::grdMain_Press();
}

void HeadlessPlatform::ReleaseCell() {
    frmQuorin::grdMain_Release();
}

void HeadlessPlatform::ClickItem(std::int32_t menu, std::int32_t item) {
    menu == 1 ? frmQuorin::mnuButtonO1_Click(item) : frmQuorin::mnuButtonO2_Click(item);
}

void HeadlessPlatform::ClickTitle(std::int32_t menu) {
    menu == 1 ? frmQuorin::mnuButton1_Click() : frmQuorin::mnuButton2_Click();
}

/// While nothing has the focus, as after a Palm's page key has closed a field, the grid takes the keys.
device::FocusTarget& HeadlessPlatform::KeyTaker() {
    device::FocusTarget* const holder = focus.Holder();
    return holder != nullptr ? *holder : grdMain;
}

void HeadlessPlatform::StrikeKey(std::int32_t keyCode) {
    device::FocusTarget& taker = KeyTaker();
    const bool passes = device::KeyDownPasses(keyCode);
    if (passes && grdMain.TurnsPages && device::IsPageKey(keyCode)) {
        grdMain.ActOnKey(keyCode); // a Palm's grid scrolls whatever has the focus
    } else if (passes && &KeyTaker() == &taker) {
        if (device::IsCharacter(keyCode))
            taker.EnterCharacter(Text(1, static_cast<char16_t>(keyCode)));
        else
            taker.ActOnKey(keyCode);
    }
    device::KeyUp(keyCode);
}

void HeadlessPlatform::TypeCharacter(TextView character) {
    focus.Holder()->EnterCharacter(character);
}

void HeadlessPlatform::ReplaceText(const Text& text) {
    focus.Holder()->ReplaceText(text);
}

void HeadlessPlatform::ChooseDate(const CalendarDate& date) {
    dteInputField.SetDate(date);
    frmQuorin::dteInputField_Closed();
}

void HeadlessPlatform::CloseWindow() {
    bool cancel = false;
    frmQuorin::Form_QueryUnload(cancel, 0);
}

void HeadlessPlatform::PressBoxButton(BoxAnswer answer) {
    device::DeviceBoxes::OpenBox* box = boxes.Current();
    box->Answer = answer;
    box->Answered = true;
}

} // namespace platform::headless
