// SPDX-License-Identifier: MIT
#include "backends/headless/headless_controls.h"

#include "backends/loop/clock.h"
#include "src/view/platform/keys.h"

#include <algorithm>

namespace backends::headless {

Box HeadlessForm::ClientArea() const {
    const Box form = PixelsOf(*this);
    return {0, 0, form.Width, form.Height};
}

void HeadlessTextBox::RaiseChange(const Text& old) {
    if (Contents() != old && Change)
        Change();
}

void HeadlessTextBox::SetContents(const Text& text) {
    Edited_.Set(text);
    if (Change)
        Change();
}

void HeadlessTextBox::ActOnKey(std::int32_t keyCode) {
    if (Key{keyCode} == Key::Left || Key{keyCode} == Key::Right)
        Edited_.MoveCaret(Key{keyCode} == Key::Left ? -1 : 1);
}

void HeadlessTextBox::EnterCharacter(TextView character) {
    const Text old = Contents();
    Edited_.Enter(character, Lines_);
    RaiseChange(old);
}

void HeadlessTextBox::ReplaceText(const Text& text) {
    const Text old = Contents();
    Edited_.ReplaceAll(text, Lines_);
    RaiseChange(old);
}

void HeadlessComboBox::Clear() {
    Entries_.clear();
    Edited_.Set(u"");
}

void HeadlessComboBox::ActOnKey(std::int32_t keyCode) {
    if (Key{keyCode} == Key::Left || Key{keyCode} == Key::Right)
        Edited_.MoveCaret(Key{keyCode} == Key::Left ? -1 : 1);
    if (Key{keyCode} != Key::Up && Key{keyCode} != Key::Down)
        return;
    const auto found = std::find(Entries_.begin(), Entries_.end(), Contents());
    const auto place = found == Entries_.end() ? -1 : static_cast<std::int32_t>(found - Entries_.begin());
    const std::int32_t next = place + (Key{keyCode} == Key::Down ? 1 : -1);
    if (next >= 0 && next < ItemCount())
        ReplaceText(Entries_[static_cast<std::size_t>(next)]);
}

void HeadlessComboBox::ReplaceText(const Text& text) {
    Edited_.ReplaceAll(text, false);
}

void HeadlessDatePicker::ActOnKey(std::int32_t keyCode) {
    constexpr std::int32_t Week = 7;
    switch (Key{keyCode}) {
    case Key::Left:
        Chosen_ = DaysLater(Chosen_, -1);
        break;
    case Key::Right:
        Chosen_ = DaysLater(Chosen_, 1);
        break;
    case Key::Up:
        Chosen_ = DaysLater(Chosen_, -Week);
        break;
    case Key::Down:
        Chosen_ = DaysLater(Chosen_, Week);
        break;
    default:
        break;
    }
}

void HeadlessListBox::Clear() {
    Items_.clear();
    Index_ = -1;
}

Text HeadlessListBox::ItemText(std::int32_t index) const {
    return index >= 0 && index < ItemCount() ? Items_[static_cast<std::size_t>(index)] : Text();
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
        Focus_.TakeFrom(*this);
}

void HeadlessGrid::SetFocus() {
    if (Visible() && Enabled())
        Focus_.MoveTo(*this);
}

void HeadlessGrid::Repainted() {
    if (Follower != nullptr)
        Follower->WantPainting();
}

void HeadlessGrid::ActOnKey(std::int32_t keyCode) {
    TakeKey(keyCode);
}

} // namespace backends::headless
