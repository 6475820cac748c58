// SPDX-License-Identifier: MIT
#include "backends/loop/form_events.h"

#include "backends/loop/acts.h"
#include "backends/loop/clock.h"
#include "src/view/input_fields.h"
#include "src/view/platform/platform.h"

namespace backends {

void ReportPress(const OwnerDrawGrid& grid, std::int32_t row, std::int32_t col) {
    ReportAct({.Word = "press", .Arguments = ArgumentsOf({row, col}), .About = grid.Cell(row, 0)});
}

void ReportPressBesideCells() {
    ReportAct({.Word = "beside"});
}

void ReportHeading() {
    ReportAct({.Word = "heading"});
}

void ReportRelease() {
    ReportAct({.Word = "release"});
}

void RaiseItemClick(std::int32_t menu, std::int32_t item) {
    const auto& items = menu == 1 ? Device().mnuButtonO1 : Device().mnuButtonO2;
    ReportAct({.Word = "menu",
               .Arguments = ArgumentsOf({menu, item}),
               .About = items[static_cast<std::size_t>(item) - 1]->Caption()});
    menu == 1 ? frmQuorin::mnuButtonO1_Click(item) : frmQuorin::mnuButtonO2_Click(item);
}

void RaiseTitleClick(std::int32_t menu) {
    const MenuItem& title = menu == 1 ? Device().mnuButton1 : Device().mnuButton2;
    ReportAct({.Word = "title", .Arguments = ArgumentsOf({menu}), .About = title.Caption()});
    menu == 1 ? frmQuorin::mnuButton1_Click() : frmQuorin::mnuButton2_Click();
}

void RaiseDateChosen() {
    ReportAct({.Word = "pick", .Arguments = TextOfDate(Device().dteInputField.Date())});
    frmQuorin::dteInputField_Closed();
}

void RaiseHoldMenuClick() {
    const ListBox& list = Device().lstHoldMenu;
    ReportAct({.Word = "holdmenu",
               .Arguments = ArgumentsOf({list.ListIndex() + 1}),
               .About = list.ItemText(list.ListIndex())});
    frmQuorin::lstHoldMenu_Click();
}

void RaiseCloseRequest() {
    ReportAct({.Word = "close"});
    AskToClose();
}

void AskToClose() {
    bool cancel = false;
    frmQuorin::Form_QueryUnload(cancel, frmQuorin::UnloadMode::TitleBar);
}

void RaiseKeyboard(const SystemObject& system, const modPDAUI::KeyboardState& keyboard) {
    const bool coversAll = keyboard.State != 0 && static_cast<float>(keyboard.Height) >= system.WorkArea().Height;
    const modPDAUI::KeyboardState reported = coversAll ? modPDAUI::KeyboardState() : keyboard;
    frmQuorin::mykb_statechanged(reported.State, reported.Left, reported.Top, reported.Width, reported.Height);
}

namespace {

/// The form has put the edited row at the head of the page, as it does for a soft keyboard. Here nothing covers the
/// rows above it, so they stay on the page as far as there is room.
void BringEditedRowOnPage(DrawnGrid& grid, std::int32_t top) {
    grid.SetTopRow(top);
    grid.PaintNow();
    grid.BringOnPage(modPDAUI::Input.EditRow);
    grid.PaintNow();
    modPDAUI::KeepFieldOverCell();
}

} // namespace

void TakeUpWorkArea(DeviceSystem& system, const Controls& seen, ScreenSize size) {
    system.SetScreen(size);
    const std::int32_t top = seen.grdMain.TopRow();
    RaiseKeyboard(system, modPDAUI::Display.KeyboardRect);
    if (seen.txtInputField.Visible() && seen.grdMain.Visible())
        BringEditedRowOnPage(seen.grdMain, top);
}

} // namespace backends
