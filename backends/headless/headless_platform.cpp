// SPDX-License-Identifier: MIT
#include "backends/headless/headless_platform.h"

#include "backends/loop/form_events.h"
#include "backends/loop/form_keys.h"

namespace platform::headless {

HeadlessPlatform::HeadlessPlatform(const DeviceOptions& options, device::CommandSource& commands,
                                   device::Watcher& watcher)
    : BackEnd(options, static_cast<PollPump&>(*this), commands, watcher), boxes(loop, watcher),
      controls{
          .form = form,
          .grdTitle = grdTitle,
          .grdMain = grdMain,
          .txtInputField = txtInputField,
          .cboInputField = cboInputField,
          .cbotxtInputField = cbotxtInputField,
          .dteInputField = dteInputField,
          .lstHoldMenu = lstHoldMenu,
          .lblStatus = lblStatus,
          .scrollBar = scrollBar,
          .menuTitles = {&menuTitles[0], &menuTitles[1]},
          .menuItems = {device::Pointers(menuItems[0]), device::Pointers(menuItems[1])},
          .fonts = fonts,
          .boxes = boxes,
      },
      record(RecordOf(controls)) {
    loop.Listen(grdTitle);
    loop.Listen(grdMain);
    DesignControls(controls);
    device::WireEvents(*this, watcher);
    boxes.Opening = [this] {
        if (grdMain.HandIsDown)
            tmrHoldEvent.SetEnabled(false);
        grdMain.HandIsDown = false; // the release is the box's
    };
}

void HeadlessPlatform::PressCell(std::int32_t row, std::int32_t col) {
    grdMain.SetFocus();
    grdMain.SetCurrentCell(row, col);
    grdMain.HandIsDown = true;
    frmQuorin::grdMain_Press();
}

void HeadlessPlatform::ReleaseCell() {
    const bool pressed = grdMain.HandIsDown;
    grdMain.HandIsDown = false;
    if (pressed)
        frmQuorin::grdMain_Release();
}

void HeadlessPlatform::ClickItem(std::int32_t menu, std::int32_t item) {
    device::RaiseItemClick(menu, item);
}

void HeadlessPlatform::ClickTitle(std::int32_t menu) {
    device::RaiseTitleClick(menu);
}

void HeadlessPlatform::StrikeKey(std::int32_t keyCode) {
    device::FocusTarget& taker = focus.HolderOr(grdMain);
    const bool passes = device::KeyDownPasses(keyCode);
    if (passes && grdMain.TurnsPages && device::IsPageKey(keyCode)) {
        grdMain.ActOnKey(keyCode); // a Palm's grid scrolls whatever has the focus
    } else if (passes && &focus.HolderOr(grdMain) == &taker) {
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

void HeadlessPlatform::TypeCharacters(TextView characters) {
    focus.Holder()->EnterCharacter(characters);
}

void HeadlessPlatform::ReplaceText(const Text& text) {
    focus.Holder()->ReplaceText(text);
}

void HeadlessPlatform::ChooseDate(const CalendarDate& date) {
    dteInputField.SetDate(date);
    frmQuorin::dteInputField_Closed();
}

void HeadlessPlatform::CloseWindow() {
    device::RaiseCloseRequest();
}

void HeadlessPlatform::PressBoxButton(BoxAnswer answer) {
    device::DeviceBoxes::OpenBox* box = boxes.Current();
    box->Answer = answer;
    box->Answered = true;
}

} // namespace platform::headless
