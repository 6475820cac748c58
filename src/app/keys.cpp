// SPDX-License-Identifier: MIT
#include "src/app/keys.h"

#include "src/app/commands.h"
#include "src/drivers/record_editor.h"
#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "src/view/input_fields.h"
#include "src/view/platform/device_traits.h"
#include "src/view/platform/keys.h"
#include "src/view/platform/platform.h"
#include "src/view/prompt.h"
#include "src/view/questions.h"
#include "src/view/screen_table.h"

#include <algorithm>

namespace modQuorin {

using modPDAUI::AnyInputFieldVisible;
using modPDAUI::Input;
using platform::CodeOf;
using platform::Device;
using platform::Key;
using platform::Traits;

namespace {

bool OnRecordScreen() {
    return IsRecordScreen(Screens.CurrentScreen);
}

/// Sends a key to the platform. The key must have been released: the platform acts on it, then the form grabs it again.
void PassKeyToSystem(std::int32_t keyCode) {
    Device().hardwareKeys.SendCharacter(keyCode);
    Device().runTime.DoEvents();
    Device().hardwareKeys.Grab(keyCode);
}

/// Handles a key that leaves the program, such as the power key: the link is closed first.
void HandOnWithLink(std::int32_t keyCode) {
    Device().hardwareKeys.Release(keyCode);
    if (modBluetooth::Ports.LinkOpen) {
        GoBack();
        modBluetooth::HandleBlueTimer();
    }
    PassKeyToSystem(keyCode);
}

/// Handles a key that starts another application: an open record is saved first.
void HandOnWithRecord(std::int32_t keyCode) {
    Device().hardwareKeys.Release(keyCode);
    if (OnRecordScreen())
        GoBack();
    PassKeyToSystem(keyCode);
}

void StoreOpenField() {
    const auto& field = Device().txtInputField;
    if (!field.Visible())
        return;
    const Text text = field.Contents();
    Device().grdMain.SetCell(Input.EditRow, Input.EditCol, text);
    modPDAUI::CellEdited(text);
}

void TellScreenOfArrow(std::int32_t keyCode) {
    const auto arrowKey = BehaviourOf(Screens.CurrentScreen).ArrowKey;
    if (arrowKey != nullptr && !AnyInputFieldVisible())
        arrowKey(keyCode);
}

void EnterDown(std::int32_t& keyCode) {
    if (!AnyInputFieldVisible() && Traits().EnterHolds)
        Device().tmrHoldEvent.SetEnabled(true);
    if (!Device().tmrHoldEvent.Enabled() && Screens.GridEditMode && Input.InputFocused) {
        if (Device().txtInputField.Visible()) {
            StoreOpenField();
            keyCode = 0;
        }
        if (Device().grdMain.Visible())
            Device().grdMain.SetFocus();
    }
    if (Device().dteInputField.Visible()) {
        modPDAUI::AcceptInput();
        keyCode = 0;
    }
}

void EscapeUp(std::int32_t& keyCode) {
    if (AnyInputFieldVisible() && Traits().EscapeDeletes) {
        Device().hardwareKeys.SendCharacter(CodeOf(Key::Backspace));
        return;
    }
    keyCode = 0;
    GoBack();
}

void WalkRecords(const Text& command) {
    if (AnyInputFieldVisible() || !OnRecordScreen())
        return;
    RecordCommand(command);
    if (command == u"PREV")
        Device().grdMain.SetCol(1);
}

/// On a grid that is not edited, the control moves its row itself.
void MoveRow(std::int32_t keyCode, std::int32_t step) {
    if (Screens.CurrentScreen == ScrInput)
        return;
    TellScreenOfArrow(keyCode);
    if (!Screens.GridEditMode || !Input.InputFocused)
        return;
    StoreOpenField();
    auto& grdMain = Device().grdMain;
    grdMain.SetFocus();
    grdMain.SetRow(grdMain.Row() + step); // the grid ignores a row outside of it
}

void MoveHoldMenu(std::int32_t step) {
    auto& list = Device().lstHoldMenu;
    const std::int32_t count = list.ItemCount();
    if (count == 0)
        return;
    const std::int32_t from = std::max(list.ListIndex(), step < 0 ? 0 : -1); // -1 while no row is highlighted
    list.SetListIndex((from + step + count) % count);
}

void Page(std::int32_t& keyCode, std::int32_t step) {
    auto& grdMain = Device().grdMain;
    if (Device().lstHoldMenu.Visible()) {
        MoveHoldMenu(step);
    } else if (Traits().GridTurnsPages) {
        grdMain.SetRow(grdMain.TopRow()); // the grid has scrolled itself
        Device().txtInputField.SetVisible(false);
        Device().cboInputField.SetVisible(false);
    } else {
        grdMain.SetRow(grdMain.Row() + step);
        keyCode = 0;
    }
}

} // namespace

void KeyDownHandler(std::int32_t& keyCode, std::int32_t) {
    switch (Key{keyCode}) {
    case Key::Left:
    case Key::Up:
    case Key::Right:
    case Key::Down:
        TellScreenOfArrow(keyCode);
        break;
    case Key::Enter:
        EnterDown(keyCode);
        break;
    case Key::PalmPowerOff:
    case Key::PalmPower:
        HandOnWithLink(keyCode);
        break;
    case Key::PalmLauncher:
    case Key::PalmFind:
    case Key::PalmCalculator:
    case Key::PalmApp1:
    case Key::PalmApp2:
    case Key::PalmApp3:
    case Key::PalmApp4:
    case Key::PalmApp5:
        HandOnWithRecord(keyCode);
        break;
    default:
        break;
    }
}

void KeyUpHandler(std::int32_t& keyCode, std::int32_t) {
    auto& grdMain = Device().grdMain;
    if (!grdMain.Enabled()) {
        // This key belongs to whatever disabled the grid, and must not act on the grid.
        grdMain.SetEnabled(true);
        grdMain.SetFocus();
        return;
    }
    switch (Key{keyCode}) {
    case Key::Enter:
        if (Traits().EnterHolds)
            Device().tmrHoldEvent.SetEnabled(false);
        break;
    case Key::Escape:
        EscapeUp(keyCode);
        break;
    case Key::Right:
    case Key::PalmRight:
        WalkRecords(u"NEXT");
        break;
    case Key::Left:
    case Key::PalmLeft:
        WalkRecords(u"PREV");
        break;
    case Key::Down:
        MoveRow(keyCode, 1);
        break;
    case Key::Up:
        MoveRow(keyCode, -1);
        break;
    case Key::PageDown:
        Page(keyCode, 1);
        break;
    case Key::PageUp:
        Page(keyCode, -1);
        break;
    case Key::PalmSelect:
        SelectCurrentRow();
        break;
    default:
        break;
    }
}

std::int32_t KeyForGrid(std::int32_t keyCode) {
    return Key{keyCode} == Key::Space && !AnyInputFieldVisible() ? platform::CodeOf(Key::PalmSelect) : keyCode;
}

/// On a device without a window, the form handles Enter itself.
bool EnterAnswersPrompt() {
    return Traits().HasWindow && Screens.CurrentScreen == ScrInput;
}

void HoldTimerFired() {
    const auto& grdMain = Device().grdMain;
    if (grdMain.Rows() >= 1)
        ShowHoldMenu(Screens.CurrentScreen, grdMain.Row(), grdMain.Col());
    frmQuorin::Form.HoldEventFired = true;
    Device().tmrHoldEvent.SetEnabled(false);
}

void ShowHoldMenu(ScreenId screen, std::int32_t row, std::int32_t col) {
    if (const auto held = BehaviourOf(screen).Held)
        held(row, col);
}

void HoldMenuClicked() {
    auto& list = Device().lstHoldMenu;
    // Read first: hiding the list makes it lose the focus, which empties it.
    const Text tag = list.Tag();
    const std::int32_t index = list.ListIndex();
    const Text text = list.ItemText(index);
    list.SetVisible(false);
    modPDAUI::RepaintGridsSoon();
    HandleHoldMenuClick(text, tag, index);
    HideHoldMenu();
}

void HandleHoldMenuClick(const Text& text, const Text& tag, std::int32_t index) {
    if (tag.empty()) {
        modPDAUI::Tell(u"HandleHoldMenuClick: ERROR Menu '" + modStringTools::UpperCase(text) + u"' does not exist.");
        return;
    }
    const auto menu = modStringTools::NumberFromText(tag);
    if (!menu)
        platform::RuntimeFailure(u"The hold menu's tag \"" + tag + u"\" is not the number of a menu");
    MenuClick(*menu, index + 1);
}

void HideHoldMenu() {
    Device().lstHoldMenu.Clear();
    Device().lstHoldMenu.SetTag(u"");
}

} // namespace modQuorin
