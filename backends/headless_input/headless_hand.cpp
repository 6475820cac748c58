// SPDX-License-Identifier: MIT
#include "backends/headless_input/headless_hand.h"

#include "backends/loop/form_events.h"
#include "backends/loop/form_keys.h"

namespace backends::headless {

void HeadlessHand::PressCell(std::int32_t row, std::int32_t col) {
    ReportPress(Platform_.grdMain, row, col);
    Platform_.grdMain.SetFocus();
    Platform_.grdMain.SetCurrentCell(row, col);
    Platform_.grdMain.HandIsDown = true;
    frmQuorin::grdMain_Press();
}

void HeadlessHand::ReleaseCell() {
    ReportRelease();
    const bool pressed = Platform_.grdMain.HandIsDown;
    Platform_.grdMain.HandIsDown = false;
    if (pressed)
        frmQuorin::grdMain_Release();
}

void HeadlessHand::ClickItem(std::int32_t menu, std::int32_t item) {
    RaiseItemClick(menu, item);
}

void HeadlessHand::ClickTitle(std::int32_t menu) {
    RaiseTitleClick(menu);
}

void HeadlessHand::StrikeKey(std::int32_t keyCode) {
    auto& grid = Platform_.grdMain;
    FocusTarget& taker = Platform_.focus.HolderOr(grid);
    const bool passes = KeyDownPasses(keyCode);
    if (passes && grid.TurnsPages && IsPageKey(keyCode)) {
        grid.ActOnKey(keyCode); // a Palm's grid scrolls whatever has the focus
    } else if (passes && &Platform_.focus.HolderOr(grid) == &taker) {
        if (IsCharacter(keyCode))
            taker.EnterCharacter(Text(1, static_cast<char16_t>(keyCode)));
        else
            taker.ActOnKey(keyCode);
    }
    RaiseKeyUp(keyCode);
}

void HeadlessHand::TypeCharacter(TextView character) {
    Platform_.focus.Holder()->EnterCharacter(character);
}

void HeadlessHand::TypeCharacters(TextView characters) {
    Platform_.focus.Holder()->EnterCharacter(characters);
}

void HeadlessHand::ReplaceText(const Text& text) {
    Platform_.focus.Holder()->ReplaceText(text);
}

void HeadlessHand::ChooseDate(const CalendarDate& date) {
    Platform_.dteInputField.SetDate(date);
    RaiseDateChosen();
}

void HeadlessHand::CloseWindow() {
    RaiseCloseRequest();
}

void HeadlessHand::PressBoxButton(BoxAnswer answer) {
    DeviceBoxes::OpenBox* box = Platform_.boxes.Current();
    box->Answer = answer;
    box->Answered = true;
}

} // namespace backends::headless
