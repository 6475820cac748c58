// SPDX-License-Identifier: MIT
#include "src/view/input_fields.h"

#include "src/view/platform/platform.h"
#include "src/view/screen_table.h"

namespace modPDAUI {

using platform::Box;
using platform::Device;

namespace {

bool LeftThePage(const Box& cell) {
    const Box page = Device().grdMain.Bounds();
    return Input.EditRow < Device().grdMain.TopRow() || cell.Top >= page.Top + page.Height;
}

Box BoxOverCell(std::int32_t row, std::int32_t col) {
    const auto& grdMain = Device().grdMain;
    Box box;
    box.Left = static_cast<float>(grdMain.ColWidth(0));
    box.Top = grdMain.Bounds().Top;
    for (std::int32_t r = grdMain.TopRow(); r < row; ++r)
        box.Top += static_cast<float>(grdMain.RowHeight(r));
    // One more pixel in width and height covers the grid lines.
    box.Width = static_cast<float>(grdMain.ColWidth(col) + 1);
    box.Height = static_cast<float>(grdMain.RowHeight(row) + 1);
    return box;
}

} // namespace

void BeginCellEdit(std::int32_t row, std::int32_t col) {
    auto& grdMain = Device().grdMain;
    auto& field = Device().txtInputField;
    // A field that is still open over another row would write this row's text into that row.
    field.SetVisible(false);
    grdMain.PaintNow(); // after a scroll the width of column 0 may change
    field.SetMultiLine(false);
    field.SetFontName(grdMain.FontName());
    field.SetFontSize(grdMain.FontSize());
    field.SetBounds(BoxOverCell(row, col));
    const Text text = grdMain.Cell(row, col);
    field.SetContents(text);
    field.SetVisible(true);
    field.Select(static_cast<std::int32_t>(text.size()), 0);
    field.SetFocus();
    Input.EditRow = grdMain.Row();
    Input.EditCol = grdMain.Col();
    Input.TakenAway = false;
    NoteCellBox();
}

void NoteCellBox() {
    Input.CellBox = BoxOverCell(Input.EditRow, Input.EditCol);
}

void KeepFieldOverCell() {
    auto& field = Device().txtInputField;
    if (OnPromptScreen() || modQuorin::Screens.CurrentScreen == modQuorin::ScrFileSelect || !field.Visible())
        return;
    const Box cell = BoxOverCell(Input.EditRow, Input.EditCol);
    if (LeftThePage(cell)) {
        Device().grdMain.SetFocus();
    } else if (cell != Input.CellBox) {
        field.SetBounds(cell);
        Input.CellBox = cell;
    }
}

void FocusPromptField() {
    auto& device = Device();
    for (platform::Control* field : {static_cast<platform::Control*>(&device.dteInputField),
                                     static_cast<platform::Control*>(&device.txtInputField),
                                     static_cast<platform::Control*>(&device.cboInputField),
                                     static_cast<platform::Control*>(&device.cbotxtInputField)}) {
        if (OnPromptScreen() && field->Visible())
            field->SetFocus();
    }
}

bool CloseCellEdit() {
    if (OnPromptScreen() || !Device().txtInputField.Visible())
        return false;
    Device().grdMain.SetFocus();
    if (Device().txtInputField.Visible())
        TextFieldLostFocus(); // the field did not have the focus
    Input.TakenAway = true;
    return true;
}

bool AnyInputFieldVisible() {
    return Device().dteInputField.Visible() || Device().txtInputField.Visible() || Device().cboInputField.Visible() ||
           Device().cbotxtInputField.Visible();
}

bool OnPromptScreen() {
    return modQuorin::ScrInput != 0 && modQuorin::Screens.CurrentScreen == modQuorin::ScrInput;
}

void CellEdited(const Text& text) {
    if (const auto edited = modQuorin::BehaviourOf(modQuorin::Screens.CurrentScreen).CellEdited)
        edited(Input.EditRow, Input.EditCol, text);
}

void TextFieldGotFocus() {
    Input.InputFocused = true;
}

void TextFieldChanged() {
    auto& field = Device().txtInputField;
    if (!field.Visible())
        return;
    Device().grdMain.SetCell(Input.EditRow, Input.EditCol, field.Contents());
    if (FieldChanged != nullptr)
        FieldChanged();
}

void TextFieldLostFocus() {
    auto& field = Device().txtInputField;
    Input.InputFocused = false;
    if (field.Visible() && OnPromptScreen())
        return; // only the end of the prompt closes it
    if (field.Visible())
        CellEdited(field.Contents());
    // Hidden first: emptying it raises its change event, which must not reach the cell.
    field.SetVisible(false);
    field.SetContents(u"");
}

void ComboFieldGotFocus() {
    Input.InputFocused = true;
}

void ComboFieldLostFocus() {
    auto& field = Device().cboInputField;
    Input.InputFocused = false;
    if (field.Visible() && OnPromptScreen())
        return;
    if (field.Visible()) {
        const Text text = field.Contents();
        Device().grdMain.SetCell(Input.EditRow, Input.EditCol, text);
        CellEdited(text);
    }
    field.SetContents(u"");
    field.SetVisible(false);
}

} // namespace modPDAUI
