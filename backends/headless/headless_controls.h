// SPDX-License-Identifier: MIT
// The controls of a form without a window: they store what is set and drawn, and raise the events of the platform.
#pragma once

#include "backends/grid/drawn_grid.h"
#include "backends/headless/edited_text.h"
#include "backends/loop/event_loop.h"
#include "backends/loop/focus.h"
#include "backends/loop/form_controls.h"
#include "src/view/platform/canvas.h"
#include "src/view/platform/controls.h"

#include <functional>
#include <vector>

namespace backends::headless {

using namespace platform;

/// Place, visibility and focus, for any control of the platform.
template <class Interface>
class BasicControl : public Interface, public FocusTarget {
public:
    BasicControl(Focus& focus, const char* name) : Focus_(focus) { Name = name; }

    Box Bounds() const override { return Bounds_; }
    void SetBounds(const Box& box) override { Bounds_ = box; }
    bool Visible() const override { return Visible_; }
    void SetVisible(bool visible) override {
        Visible_ = visible;
        if (!visible)
            Focus_.TakeFrom(*this);
    }
    bool Enabled() const override { return Enabled_; }
    void SetEnabled(bool enabled) override { Enabled_ = enabled; }
    void SetFocus() override {
        if (Visible_ && Enabled_)
            Focus_.MoveTo(*this);
    }

private:
    Focus& Focus_;
    Box Bounds_;
    bool Visible_ = false;
    bool Enabled_ = true;
};

template <class Interface>
class BasicFontControl : public BasicControl<Interface> {
public:
    using BasicControl<Interface>::BasicControl;
    Text FontName() const override { return Font_; }
    void SetFontName(const Text& name) override { Font_ = name; }
    std::int32_t FontSize() const override { return Size_; }
    void SetFontSize(std::int32_t size) override { Size_ = size; }

private:
    Text Font_;
    std::int32_t Size_ = 0;
};

class HeadlessForm final : public Form {
public:
    Box Bounds() const override { return Twips_; }
    void SetBounds(const Box& twips) override { Twips_ = twips; }
    Box ClientArea() const override; ///< the whole form: there is no frame
    float TwipsPerPixelX() const override { return TwipsPerPixel; }
    float TwipsPerPixelY() const override { return TwipsPerPixel; }

private:
    Box Twips_;
};

class HeadlessTextBox final : public BasicFontControl<EditBox> {
public:
    using BasicFontControl::BasicFontControl;
    Text Contents() const override { return Edited_.Contents(); }
    void SetContents(const Text& text) override;
    bool MultiLine() const override { return Lines_; }
    void SetMultiLine(bool multiLine) override { Lines_ = multiLine; }
    void Commit() override {} // what is typed is there at once
    void Select(std::int32_t position, std::int32_t length) override { Edited_.Select(position, length); }

    void ActOnKey(std::int32_t keyCode) override;
    bool TakesText() const override { return true; }
    void EnterCharacter(TextView character) override;
    void ReplaceText(const Text& text) override;
    std::int32_t Caret() const override { return Edited_.Caret(); }
    std::int32_t SelectedLength() const { return Edited_.SelectedLength(); }

    std::function<void()> Change;

private:
    void RaiseChange(const Text& old);

    EditedText Edited_;
    bool Lines_ = false;
};

class HeadlessComboBox final : public BasicFontControl<EditCombo> {
public:
    using BasicFontControl::BasicFontControl;
    Text Contents() const override { return Edited_.Contents(); }
    void SetContents(const Text& text) override { Edited_.Set(text); }
    void Select(std::int32_t position, std::int32_t length) override { Edited_.Select(position, length); }
    void Clear() override;
    void AddItem(const Text& item) override { Entries_.push_back(item); }
    std::int32_t ItemCount() const override { return static_cast<std::int32_t>(Entries_.size()); }

    /// Up and down choose the item before or after the one that equals the text.
    void ActOnKey(std::int32_t keyCode) override;
    bool TakesText() const override { return true; }
    void EnterCharacter(TextView character) override { Edited_.Enter(character, false); }
    void ReplaceText(const Text& text) override;

    std::vector<Text> Items() const override { return Entries_; }
    std::int32_t Caret() const override { return Edited_.Caret(); }
    std::int32_t SelectedLength() const { return Edited_.SelectedLength(); }

private:
    EditedText Edited_;
    std::vector<Text> Entries_;
};

class HeadlessDatePicker final : public BasicControl<DatePicker> {
public:
    using BasicControl::BasicControl;
    CalendarDate Date() const override { return Chosen_; }
    void SetDate(const CalendarDate& date) override { Chosen_ = date; }
    /// Left and right move by a day, up and down by a week.
    void ActOnKey(std::int32_t keyCode) override;

private:
    CalendarDate Chosen_;
};

class HeadlessListBox final : public BasicControl<ListBox> {
public:
    using BasicControl::BasicControl;
    void Clear() override;
    void AddItem(const Text& item) override { Items_.push_back(item); }
    std::int32_t ItemCount() const override { return static_cast<std::int32_t>(Items_.size()); }
    std::int32_t ListIndex() const override { return Index_; }
    void SetListIndex(std::int32_t index) override { Index_ = index; }
    Text ItemText(std::int32_t index) const override;
    Text Tag() const override { return Tag_; }
    void SetTag(const Text& tag) override { Tag_ = tag; }

private:
    std::vector<Text> Items_;
    std::int32_t Index_ = -1;
    Text Tag_;
};

class HeadlessLabel final : public BasicFontControl<Label> {
public:
    using BasicFontControl::BasicFontControl;
    void SetVisible(bool visible) override;
    Text Caption() const override { return Value_; }
    void SetCaption(const Text& caption) override { Value_ = caption; }
    void SetBackColor(std::int32_t) override {}
    void SetForeColor(std::int32_t) override {}
    void Refresh() override;

    std::function<void()> Painted; ///< while it is visible
    std::function<void()> Hidden;

private:
    Text Value_;
};

inline constexpr float UsualBarWidth = 13; ///< pixels

class HeadlessScrollBar final : public ScrollBar {
public:
    explicit HeadlessScrollBar(float width) : Pixels_(width) {}
    float Width() const override { return Pixels_; }

private:
    float Pixels_;
};

class HeadlessMenuItem final : public MenuItem {
public:
    Text Caption() const override { return Value_; }
    void SetCaption(const Text& caption) override { Value_ = caption; }
    bool Visible() const override { return Visible_; }
    void SetVisible(bool visible) override { Visible_ = visible; }
    bool Enabled() const override { return Enabled_; }
    void SetEnabled(bool enabled) override { Enabled_ = enabled; }

private:
    Text Value_;
    bool Visible_ = false;
    bool Enabled_ = true;
};

/// Paints itself when the loop handles what is due, as a grid in a window does.
class HeadlessGrid final : public DrawnGrid, public FocusTarget, public EventSource {
public:
    HeadlessGrid(Focus& focus, const char* name) : Focus_(focus) { Name = name; }
    void SetVisible(bool visible) override;
    void SetFocus() override;
    void ActOnKey(std::int32_t keyCode) override;

    bool RaiseWhatIsPending() override { return RaisePainting(); }

    HeadlessGrid* Follower = nullptr; ///< takes its columns from this grid: it is painted again whenever this one is

private:
    void Repainted() override;

    Focus& Focus_;
};

} // namespace backends::headless
