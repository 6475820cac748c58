// SPDX-License-Identifier: MIT
#include "platform/headless/controls.h"

namespace platform::headless {

namespace {

/// Painting is for its effects on the layout alone: nobody sees it.
class BlindCanvas final : public CellCanvas {
public:
    void SetForeColor(std::int32_t) override {}
    void SetBackColor(std::int32_t) override {}
    void FrameRect(std::int32_t, std::int32_t, std::int32_t, std::int32_t) override {}
    void ClearCell() override {}
    void DrawLine(std::int32_t, std::int32_t, const Text&) override {}
    void DrawBox(std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                 const Text&) override {}
};

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

void HeadlessTextBox::SetContents(const Text& text) {
    if (text == Value)
        return;
    Value = text;
    if (Change)
        Change();
}

void HeadlessTextBox::Select(std::int32_t position, std::int32_t length) {
    Caret = position;
    Selected = length;
}

void HeadlessComboBox::Select(std::int32_t position, std::int32_t length) {
    Caret = position;
    Selected = length;
}

void HeadlessComboBox::Clear() {
    Entries.clear();
    Value.clear();
}

void HeadlessComboBox::RemoveItem(std::int32_t index) {
    if (index >= 0 && index < ItemCount())
        Entries.erase(Entries.begin() + index);
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

void HeadlessGrid::PaintCell(const common::CellToPaint& cell) {
    BlindCanvas canvas;
    if (DrawCell != nullptr)
        DrawCell(canvas, cell.Row, cell.Col, cell.X, cell.Y, cell.Width, cell.Height, cell.Current ? CurrentCell : 0);
}

} // namespace platform::headless
