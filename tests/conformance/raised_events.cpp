// SPDX-License-Identifier: MIT
// Every handler of src/app/form.h must be defined here. If one were missing, the linker would take the application's,
// and with it a second definition of all others.
#include "tests/conformance/raised_events.h"

#include "src/app/form.h"

#include <initializer_list>

namespace conformance {

namespace {

void Note(const std::string& name, std::initializer_list<std::int32_t> numbers = {}) {
    std::string heard = name;
    for (const std::int32_t number : numbers)
        heard += " " + std::to_string(number);
    Raised.Heard.push_back(heard);
    const auto found = Raised.When.find(name);
    if (found == Raised.When.end())
        return;
    const std::function<void()> action = found->second; // the action may set another one
    action();
}

void NoteKey(const std::string& name, std::int32_t& key) {
    Note(name, {key});
    if (Raised.Consumes.count(name) != 0)
        key = 0;
}

void NoteDrawing(platform::CellCanvas& canvas, const DrawnCell& cell) {
    Raised.Drawn.push_back(cell);
    if (Raised.Draw)
        Raised.Draw(canvas, cell);
}

} // namespace

} // namespace conformance

namespace frmQuorin {

using conformance::Note;
using conformance::NoteDrawing;
using conformance::NoteKey;

void Form_Load() {
    Note("Form_Load");
}

void Form_Activate() {
    Note("Form_Activate");
}

void Form_QueryUnload(bool& cancel, UnloadMode unloadMode) {
    Note("Form_QueryUnload", {static_cast<std::int32_t>(unloadMode)});
    cancel = unloadMode != UnloadMode::System;
}

void Form_Unload() {
    Note("Form_Unload");
}

void Form_KeyDown(std::int32_t& keyCode, std::int32_t) {
    NoteKey("Form_KeyDown", keyCode);
}

void Form_KeyUp(std::int32_t& keyCode, std::int32_t) {
    NoteKey("Form_KeyUp", keyCode);
}

void Form_KeyPress(std::int32_t& character) {
    NoteKey("Form_KeyPress", character);
}

void grdMain_Press() {
    Note("grdMain_Press");
}

void grdMain_Release() {
    Note("grdMain_Release");
}

void grdMain_RowColChange() {
    Note("grdMain_RowColChange");
}

void grdMain_DrawCell(platform::CellCanvas& canvas, const platform::PaintedCell& cell) {
    NoteDrawing(canvas, {cell.Row, cell.Col, cell.X, cell.Y, cell.Width, cell.Height, cell.Current, false});
}

void grdTitle_GotFocus() {
    Note("grdTitle_GotFocus");
}

void grdTitle_Release() {
    Note("grdTitle_Release");
}

void grdTitle_RowColChange() {
    Note("grdTitle_RowColChange");
}

void grdTitle_DrawCell(platform::CellCanvas& canvas, const platform::PaintedCell& cell) {
    NoteDrawing(canvas, {cell.Row, cell.Col, cell.X, cell.Y, cell.Width, cell.Height, cell.Current, true});
}

void lstHoldMenu_Click() {
    Note("lstHoldMenu_Click");
}

void lstHoldMenu_LostFocus() {
    Note("lstHoldMenu_LostFocus");
}

void mnuButton1_Click() {
    Note("mnuButton1_Click");
}

void mnuButton2_Click() {
    Note("mnuButton2_Click");
}

void mnuButtonO1_Click(std::int32_t index) {
    Note("mnuButtonO1_Click", {index});
}

void mnuButtonO2_Click(std::int32_t index) {
    Note("mnuButtonO2_Click", {index});
}

void SoftKey1Pressed() {
    Note("SoftKey1Pressed");
}

void SoftKey2Pressed() {
    Note("SoftKey2Pressed");
}

void serConnection_Receive() {
    Note("serConnection_Receive");
}

void tmrBlue_Tick() {
    Note("tmrBlue_Tick");
}

void tmrHoldEvent_Tick() {
    Note("tmrHoldEvent_Tick");
}

void tmrMenus_Tick() {
    Note("tmrMenus_Tick");
}

void txtInputField_GotFocus() {
    Note("txtInputField_GotFocus");
}

void txtInputField_LostFocus() {
    Note("txtInputField_LostFocus");
}

void txtInputField_Change() {
    Note("txtInputField_Change");
}

void cboInputField_GotFocus() {
    Note("cboInputField_GotFocus");
}

void cboInputField_LostFocus() {
    Note("cboInputField_LostFocus");
}

void dteInputField_Closed() {
    Note("dteInputField_Closed");
}

void myCsys_AppBackground() {
    Note("myCsys_AppBackground");
}

void myCsys_AppMaximized() {
    Note("myCsys_AppMaximized");
}

void myCsys_AppMinimized() {
    Note("myCsys_AppMinimized");
}

void mykb_statechanged(std::int16_t state, std::int32_t left, std::int32_t top, std::int32_t width,
                       std::int32_t height) {
    Note("mykb_statechanged", {state, left, top, width, height});
}

} // namespace frmQuorin
