// SPDX-License-Identifier: MIT
#include "backends/headless/headless_platform.h"

#include "backends/loop/form_events.h"
#include "backends/loop/form_keys.h"

namespace backends::headless {

HeadlessPlatform::HeadlessPlatform(HostDevice& device, CommandSource& commands, Watcher& watcher)
    : HostBackEnd(device, static_cast<PollPump&>(*this), commands, watcher), HeadlessControls(focus, loop, watcher),
      record(RecordOf(controls)) {
    DesignControls(controls);
    boxes.Opening = [this] {
        if (grdMain.HandIsDown)
            tmrHoldEvent.SetEnabled(false);
        grdMain.HandIsDown = false; // the release goes to the box
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
    RaiseItemClick(menu, item);
}

void HeadlessPlatform::ClickTitle(std::int32_t menu) {
    RaiseTitleClick(menu);
}

void HeadlessPlatform::StrikeKey(std::int32_t keyCode) {
    FocusTarget& taker = focus.HolderOr(grdMain);
    const bool passes = KeyDownPasses(keyCode);
    if (passes && grdMain.TurnsPages && IsPageKey(keyCode)) {
        grdMain.ActOnKey(keyCode); // a Palm's grid scrolls whatever has the focus
    } else if (passes && &focus.HolderOr(grdMain) == &taker) {
        if (IsCharacter(keyCode))
            taker.EnterCharacter(Text(1, static_cast<char16_t>(keyCode)));
        else
            taker.ActOnKey(keyCode);
    }
    RaiseKeyUp(keyCode);
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
    RaiseCloseRequest();
}

void HeadlessPlatform::PressBoxButton(BoxAnswer answer) {
    DeviceBoxes::OpenBox* box = boxes.Current();
    box->Answer = answer;
    box->Answered = true;
}

} // namespace backends::headless
