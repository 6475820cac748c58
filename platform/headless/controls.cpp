// SPDX-License-Identifier: MIT
#include "platform/headless/controls.h"

#include "platform/headless/clock.h"
#include "platform/headless/key_codes.h"

#include <algorithm>

namespace platform::headless {

namespace {

constexpr std::int32_t CurrentCell = -1; // the `selected` of a draw-cell event

} // namespace

Box HeadlessForm::Pixels() const {
    return {Twips.Left / TwipsPerPixel, Twips.Top / TwipsPerPixel, Twips.Width / TwipsPerPixel,
            Twips.Height / TwipsPerPixel};
}

Box HeadlessForm::ClientArea() const {
    const Box form = Pixels();
    return {0, 0, form.Width, form.Height};
}

void HeadlessTextBox::RaiseChange(const Text& old) {
    if (Contents() != old && Change)
        Change();
}

void HeadlessTextBox::SetContents(const Text& text) {
    const Text old = Contents();
    Edited.Set(text);
    RaiseChange(old);
}

void HeadlessTextBox::ActOnKey(std::int32_t keyCode) {
    if (keyCode == KeyLeft || keyCode == KeyRight)
        Edited.MoveCaret(keyCode == KeyLeft ? -1 : 1);
}

void HeadlessTextBox::EnterCharacter(TextView character) {
    const Text old = Contents();
    Edited.Enter(character, Lines);
    RaiseChange(old);
}

void HeadlessTextBox::ReplaceText(const Text& text) {
    const Text old = Contents();
    Edited.ReplaceAll(text, Lines);
    RaiseChange(old);
}

void HeadlessComboBox::Clear() {
    Entries.clear();
    Edited.Set(u"");
}

void HeadlessComboBox::RemoveItem(std::int32_t index) {
    if (index >= 0 && index < ItemCount())
        Entries.erase(Entries.begin() + index);
}

void HeadlessComboBox::ActOnKey(std::int32_t keyCode) {
    if (keyCode == KeyLeft || keyCode == KeyRight)
        Edited.MoveCaret(keyCode == KeyLeft ? -1 : 1);
    if (keyCode != KeyUp && keyCode != KeyDown)
        return;
    const auto found = std::find(Entries.begin(), Entries.end(), Contents());
    const auto place = found == Entries.end() ? -1 : static_cast<std::int32_t>(found - Entries.begin());
    const std::int32_t next = place + (keyCode == KeyDown ? 1 : -1);
    if (next >= 0 && next < ItemCount())
        ReplaceText(Entries[static_cast<std::size_t>(next)]);
}

void HeadlessComboBox::ReplaceText(const Text& text) {
    Edited.ReplaceAll(text, false);
}

void HeadlessDatePicker::ActOnKey(std::int32_t keyCode) {
    constexpr std::int32_t Week = 7;
    switch (keyCode) {
    case KeyLeft:
        Chosen = DaysLater(Chosen, -1);
        break;
    case KeyRight:
        Chosen = DaysLater(Chosen, 1);
        break;
    case KeyUp:
        Chosen = DaysLater(Chosen, -Week);
        break;
    case KeyDown:
        Chosen = DaysLater(Chosen, Week);
        break;
    default:
        break;
    }
}

void HeadlessListBox::Clear() {
    Items.clear();
    Index = -1;
}

Text HeadlessListBox::ItemText(std::int32_t index) const {
    return index >= 0 && index < ItemCount() ? Items[static_cast<std::size_t>(index)] : Text();
}

void HeadlessLabel::SetVisible(bool visible) {
    const bool wasVisible = Visible();
    BasicFontControl::SetVisible(visible);
    if (wasVisible && !visible && Hidden)
        Hidden();
}

void HeadlessLabel::Refresh() {
    if (Visible() && Painted)
        Painted();
}

void HeadlessGrid::SetVisible(bool visible) {
    GridStore::SetVisible(visible);
    if (!visible)
        FocusOfForm.TakeFrom(*this);
}

void HeadlessGrid::SetFocus() {
    if (Visible() && Enabled())
        FocusOfForm.MoveTo(*this);
}

void HeadlessGrid::RowColChanged() {
    if (Moved != nullptr)
        Moved();
}

void HeadlessGrid::ActOnKey(std::int32_t keyCode) {
    if (!Enabled() || !Visible())
        return;
    switch (keyCode) {
    case KeyUp:
        SetRow(Row() - 1); // a row or a column outside of the grid is not taken
        break;
    case KeyDown:
        SetRow(Row() + 1);
        break;
    case KeyLeft:
        SetCol(Col() - 1);
        break;
    case KeyRight:
        SetCol(Col() + 1);
        break;
    case KeyPageUp:
        TurnPage(-1);
        break;
    case KeyPageDown:
        TurnPage(1);
        break;
    default:
        break;
    }
}

/// By as many rows as stand whole on the page, and never past the last one.
void HeadlessGrid::TurnPage(std::int32_t step) {
    if (!TurnsPages)
        return;
    std::int32_t onPage = 0;
    while (RowOnScreen(TopRow() + onPage))
        ++onPage;
    const std::int32_t rows = std::max(onPage, 1);
    const std::int32_t lastTop = std::max(Rows() - rows, 0);
    SetTopRow(std::clamp(TopRow() + step * rows, 0, lastTop));
}

const CellPicture* HeadlessGrid::Picture(std::int32_t row, std::int32_t col) const {
    const auto found = Pictures.find({row, col});
    return found != Pictures.end() ? &found->second : nullptr;
}

bool HeadlessGrid::RaiseWhatIsPending() {
    if (!PaintWanted || !Visible())
        return false;
    PaintWanted = false;
    Pictures.clear();
    PaintPage();
    return true;
}

void HeadlessGrid::PaintCell(const common::CellToPaint& cell) {
    RecordingCanvas canvas;
    if (DrawCell != nullptr)
        DrawCell(canvas, cell.Row, cell.Col, cell.X, cell.Y, cell.Width, cell.Height, cell.Current ? CurrentCell : 0);
    if (!Visible())
        return; // painted for its effect on the sizes
    if (canvas.Picture())
        Pictures[{cell.Row, cell.Col}] = *canvas.Picture();
    else
        Pictures.erase({cell.Row, cell.Col});
}

} // namespace platform::headless
