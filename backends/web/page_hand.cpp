// SPDX-License-Identifier: MIT
#include "backends/web/page_hand.h"

#include "backends/loop/acts.h"
#include "backends/loop/clock.h"
#include "backends/loop/form_events.h"
#include "backends/loop/form_keys.h"
#include "companion/form_state.h"
#include "companion/port_setting.h"
#include "src/app/form.h"
#include "src/app/keys.h"
#include "src/link/ports.h"
#include "src/view/input_fields.h"

#include <algorithm>

namespace backends::web {

namespace {

// Keys of a keyboard that no device has. The page sends them by numbers of its own.
constexpr std::int32_t TabKey = -1;
constexpr std::int32_t BackTabKey = -2;
constexpr std::int32_t HomeKey = -3;
constexpr std::int32_t EndKey = -4;
constexpr std::int32_t SelectingEnterKey = -5; ///< Enter outside of a field, but not of a bar-code scanner

bool IsOffered(const MenuItem& item) {
    return item.Visible() && item.Enabled();
}

} // namespace

const std::vector<PageHand::Row>& PageHand::Rows() {
    static const std::vector<Row> rows = {
        {"press", Aim::Screen, &PageHand::Press},
        {"release", Aim::Form, &PageHand::Release},
        {"heading", Aim::Screen, &PageHand::PressHeading},
        {"scroll", Aim::Screen, &PageHand::Scroll},
        {"keydown", Aim::Screen, &PageHand::KeyDown},
        {"keyup", Aim::Form, &PageHand::KeyUp},
        {"edit", Aim::Field, &PageHand::Edit},
        {"setdate", Aim::Field, &PageHand::SetDate},
        {"date", Aim::Field, &PageHand::ChooseDate},
        {"list", Aim::Screen, &PageHand::ChooseFromList},
        {"title", Aim::Screen, &PageHand::ClickTitle},
        {"item", Aim::Screen, &PageHand::ClickItem},
        {"answer", Aim::Box, &PageHand::Answer},
        {"size", Aim::Anywhere, &PageHand::TakeUpSize},
        {"notice", Aim::Anywhere, &PageHand::ConfirmNotice},
        {"useport", Aim::Anywhere, &PageHand::UsePort},
        {"losses", Aim::Anywhere, &PageHand::LossesSeen},
        {"close", Aim::Form, &PageHand::Close},
    };
    return rows;
}

void PageHand::Do(const PageEvent& event) {
    Form_.Heard = std::max(Form_.Heard, event.Serial);
    Form_.stage.Look();
    const auto row =
        std::find_if(Rows().begin(), Rows().end(), [&](const Row& each) { return event.Kind == each.Kind; });
    if (row != Rows().end() && IsThere(row->MeantFor, event))
        (this->*row->Does)(event);
}

bool PageHand::IsThere(Aim aim, const PageEvent& event) const {
    const bool isFree = Form_.boxes.Current() == nullptr;
    switch (aim) {
    case Aim::Anywhere:
        return true;
    case Aim::Form:
        return isFree;
    case Aim::Screen:
        return isFree && event.Stage == Form_.stage.Screen();
    case Aim::Field:
        return isFree && event.Field != 0 && event.Field == Form_.stage.Field();
    case Aim::Box:
        return !isFree && event.Box == Form_.BoxNumber();
    }
    return false;
}

// --- the pointer -----------------------------------------------------------------------------------------------------

void PageHand::Press(const PageEvent& event) {
    auto& grid = Form_.grdMain;
    if (!grid.Enabled() || !grid.Visible())
        return;
    const auto cell = grid.CellAt(event.X, event.Y);
    if (cell)
        ReportPress(grid, cell->Row, cell->Col);
    else
        ReportPressBesideCells();
    grid.SetFocus();
    if (!cell)
        return;
    grid.SetCurrentCell(cell->Row, cell->Col);
    grid.HandIsDown = true;
    frmQuorin::grdMain_Press();
}

void PageHand::Release(const PageEvent&) {
    if (!Form_.grdMain.HandIsDown)
        return;
    ReportRelease();
    Form_.grdMain.HandIsDown = false;
    frmQuorin::grdMain_Release();
}

/// A press on the title takes the focus from an open field, which closes it; a prompt's field gets it back.
void PageHand::PressHeading(const PageEvent&) {
    if (!Form_.grdTitle.Visible() || !Form_.grdTitle.Enabled())
        return;
    ReportHeading();
    Form_.grdTitle.SetFocus();
    modPDAUI::FocusPromptField();
    frmQuorin::grdTitle_Release();
}

/// A field that is open over a cell closes, because its cell moves.
void PageHand::Scroll(const PageEvent& event) {
    auto& grid = Form_.grdMain;
    if (!grid.Enabled() || !grid.Visible())
        return;
    const std::int32_t top = std::clamp(event.Row, 0, std::max(grid.LastTop(), 0));
    if (top == grid.TopRow())
        return;
    if (grid.FieldIsOpen != nullptr && grid.FieldIsOpen())
        ReportAct({.Word = "scroll", .Arguments = ArgumentsOf({top})});
    grid.SetTopRow(top);
    grid.SetFocus();
}

// --- keys ------------------------------------------------------------------------------------------------------------

void PageHand::KeyDown(const PageEvent& event) {
    if (TakeTab(event.Key) || TakeHomeOrEnd(event.Key))
        return;
    FocusTarget& taker = Form_.focus.HolderOr(Form_.grdMain);
    const bool isGrid = &taker == &Form_.grdMain;
    std::int32_t code = event.Key;
    if (code == SelectingEnterKey)
        code = platform::CodeOf(isGrid && !modPDAUI::AnyInputFieldVisible() ? Key::PalmSelect : Key::Enter);
    if (code <= 0)
        return;
    if (isGrid)
        code = modQuorin::KeyForGrid(code);
    const modQuorin::ScreenId screen = modQuorin::Screens.CurrentScreen;
    if (!event.Repeated)
        Held_[event.Key] = {code, screen};
    else if (const auto held = Held_.find(event.Key); held == Held_.end() || held->second.Screen != screen)
        return; // it was pressed on another screen
    if (AnswersPrompt(Form_, code))
        RaiseItemClick(2, 1);
    else
        Strike(taker, code);
}

void PageHand::Strike(FocusTarget& taker, std::int32_t code) {
    auto& grid = Form_.grdMain;
    if (!KeyDownPasses(code) || (IsPageKey(code) && Form_.focus.Holder() == &Form_.dteInputField))
        return;
    if (grid.TurnsPages && IsPageKey(code))
        return grid.ActOnKey(code); // on Palm OS the grid scrolls, whatever has the focus
    if (&Form_.focus.HolderOr(grid) != &taker)
        return;
    if (IsCharacter(code))
        taker.EnterCharacter(Text(1, static_cast<char16_t>(code)));
    else
        taker.ActOnKey(code);
}

/// Raises no key up if the screen has changed since the press: the key has acted, or was meant for the screen before.
void PageHand::KeyUp(const PageEvent& event) {
    const auto found = Held_.find(event.Key);
    if (found == Held_.end())
        return;
    const HeldKey key = found->second;
    Held_.erase(found);
    if (key.Screen == modQuorin::Screens.CurrentScreen)
        RaiseKeyUp(key.Code);
    else if (Key{key.Code} == Key::Enter)
        Form_.tmrHoldEvent.SetEnabled(false); // which its press has started
}

void PageHand::Tap(std::int32_t row, std::int32_t col) {
    auto& grid = Form_.grdMain;
    grid.BringOnPage(row);
    ReportPress(grid, row, col);
    grid.SetFocus();
    grid.SetCurrentCell(row, col);
    grid.HandIsDown = true;
    frmQuorin::grdMain_Press();
    Release({});
}

/// Tab closes the field of a record and opens the one below it that is edited in place, Shift+Tab the one above, by a
/// tap on its cell. At the last one it closes the field.
bool PageHand::TakeTab(std::int32_t key) {
    if (key != TabKey && key != BackTabKey)
        return false;
    auto& grid = Form_.grdMain;
    const bool isOpen = Form_.focus.Holder() == &Form_.txtInputField && Form_.txtInputField.Visible();
    if (!grid.Visible() || !grid.Enabled() || (!isOpen && modPDAUI::AnyInputFieldVisible()))
        return true;
    constexpr std::int32_t ValueColumn = 1;
    const std::int32_t from = isOpen ? modPDAUI::Input.EditRow : grid.Row() - 1;
    if (const auto row = companion::NextEditedRow(from, key == BackTabKey ? -1 : 1))
        Tap(*row, ValueColumn);
    else if (isOpen)
        Strike(Form_.txtInputField, platform::CodeOf(Key::Enter));
    return true;
}

bool PageHand::TakeHomeOrEnd(std::int32_t key) {
    if (key != HomeKey && key != EndKey)
        return false;
    auto& grid = Form_.grdMain;
    if (&Form_.focus.HolderOr(grid) == &grid && HasEndsToSelect(grid))
        SelectEnd(grid, key == HomeKey);
    return true;
}

// --- input controls --------------------------------------------------------------------------------------------------

/// The browser's control has another text or another caret.
void PageHand::Edit(const PageEvent& event) {
    FocusTarget* const holder = Form_.focus.Holder();
    if (holder == nullptr || !holder->TakesText())
        return;
    const auto replace = [&](auto& field) {
        if (holder != &field)
            return;
        if (field.Contents() != event.Words)
            field.ReplaceText(event.Words);
        field.Select(event.Caret, event.Selected);
    };
    replace(Form_.txtInputField);
    replace(Form_.cboInputField);
    replace(Form_.cbotxtInputField);
}

void PageHand::SetDate(const PageEvent& event) {
    const auto date = DateFromText(modStringTools::ToBytes(event.Words));
    if (date && Form_.dteInputField.Visible())
        Form_.dteInputField.SetDate(*date);
}

void PageHand::ChooseDate(const PageEvent& event) {
    SetDate(event);
    if (Form_.dteInputField.Visible())
        RaiseDateChosen();
}

void PageHand::ChooseFromList(const PageEvent& event) {
    auto& list = Form_.lstHoldMenu;
    if (!list.Visible() || event.Item < 0 || list.ItemText(event.Item) != event.Words)
        return;
    list.SetListIndex(event.Item);
    RaiseHoldMenuClick();
}

// --- menus, boxes, the window ----------------------------------------------------------------------------------------

void PageHand::ClickTitle(const PageEvent& event) {
    if ((event.Menu == 1 || event.Menu == 2) && IsOffered(*Form_.controls.menuTitles[event.Menu == 1 ? 0 : 1]))
        RaiseTitleClick(event.Menu);
}

/// A menu may have changed since the page has shown it: the item must still have its caption.
void PageHand::ClickItem(const PageEvent& event) {
    if ((event.Menu != 1 && event.Menu != 2) || event.Item < 1 || event.Item > MenuItemCount)
        return;
    const std::size_t menu = event.Menu == 1 ? 0 : 1;
    const MenuItem& item = *Form_.controls.menuItems[menu][static_cast<std::size_t>(event.Item) - 1];
    if (IsOffered(*Form_.controls.menuTitles[menu]) && IsOffered(item) && item.Caption() == event.Words)
        RaiseItemClick(event.Menu, event.Item);
}

void PageHand::Answer(const PageEvent& event) {
    DeviceBoxes::OpenBox& box = *Form_.boxes.Current();
    box.Answer = box.Buttons == BoxButtons::Ok ? BoxAnswer::Ok : event.Yes ? BoxAnswer::Yes : BoxAnswer::No;
    box.Answered = true;
}

void PageHand::ConfirmNotice(const PageEvent& event) {
    Form_.onlooker.notices.Act(event.Words);
}

/// A link that is open with another port is dropped as if that had gone: the next tick opens the chosen one.
void PageHand::UsePort(const PageEvent& event) {
    if (event.Item < 1)
        return;
    if (Form_.serial.PortOpen() && modBluetooth::StoredPort() != companion::NameOfPort(event.Item))
        Form_.serial.Drop();
    companion::ChoosePort(event.Item);
}

void PageHand::Close(const PageEvent&) {
    RaiseCloseRequest();
}

} // namespace backends::web
