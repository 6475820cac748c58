// SPDX-License-Identifier: MIT
// The controls of a form that nobody sees. Each keeps what it is given and raises no event; a comment says which events
// a real one has to raise, by calling the handler of src/app/form.h.
#pragma once

#include "backends/grid/grid_store.h"

#include <vector>

namespace backends::none {

/// Every control. A real one raises "lost focus" and "got focus" in SetFocus, unless it is hidden or disabled, and
/// gives the focus up when it is hidden.
template <class Interface>
class NoneControl : public Interface {
public:
    Box Bounds() const override { return Bounds_; }
    void SetBounds(const Box& box) override { Bounds_ = box; }
    bool Visible() const override { return Visible_; }
    void SetVisible(bool visible) override { Visible_ = visible; }
    bool Enabled() const override { return Enabled_; }
    void SetEnabled(bool enabled) override { Enabled_ = enabled; }
    void SetFocus() override {}

private:
    Box Bounds_;
    bool Visible_ = false;
    bool Enabled_ = true;
};

/// A control with a font. A platform that lacks the font or the size may round: the application reads it back.
template <class Interface>
class NoneFontControl : public NoneControl<Interface> {
public:
    Text FontName() const override { return FontName_; }
    void SetFontName(const Text& name) override { FontName_ = name; }
    std::int32_t FontSize() const override { return FontSize_; }
    void SetFontSize(std::int32_t size) override { FontSize_ = size; }

private:
    Text FontName_;
    std::int32_t FontSize_ = 8;
};

/// A real form calls Form_QueryUnload when it is to be closed, and Form_Unload if that has not cancelled it.
class NoneForm final : public Form {
public:
    Box Bounds() const override { return Twips_; }
    void SetBounds(const Box& twips) override { Twips_ = twips; }
    Box ClientArea() const override {
        return {0, 0, Twips_.Width / TwipsPerPixelX(), Twips_.Height / TwipsPerPixelY()};
    }
    float TwipsPerPixelX() const override { return TwipsPerPixel; }
    float TwipsPerPixelY() const override { return TwipsPerPixel; }

private:
    Box Twips_{0, 0, 240 * TwipsPerPixel, 320 * TwipsPerPixel};
};

/// A real text box raises txtInputField_Change at each change, also at one that the program makes, and the events of
/// its focus. What a person types replaces the selection. Enter begins a line (CR and LF, which are one character for
/// the caret) where there may be several, and writes nothing where there is one. Left and right move the caret.
class NoneTextBox final : public NoneFontControl<TextBox> {
public:
    Text Contents() const override { return Contents_; }
    void SetContents(const Text& text) override { Contents_ = text; }
    bool MultiLine() const override { return MultiLine_; }
    void SetMultiLine(bool multiLine) override { MultiLine_ = multiLine; }
    void Commit() override {}
    void Select(std::int32_t, std::int32_t) override {}

private:
    Text Contents_;
    bool MultiLine_ = false;
};

/// A real one raises the events of its focus and none for its text. Up and down choose the item before or after the one
/// that equals the text.
class NoneComboBox final : public NoneFontControl<ComboBox> {
public:
    Text Contents() const override { return Contents_; }
    void SetContents(const Text& text) override { Contents_ = text; }
    void Select(std::int32_t, std::int32_t) override {}
    void Clear() override {
        Items_ = 0;
        Contents_.clear();
    }
    void AddItem(const Text&) override { ++Items_; }
    std::int32_t ItemCount() const override { return Items_; }

private:
    Text Contents_;
    std::int32_t Items_ = 0;
};

/// A real one raises dteInputField_Closed when a person has chosen a date, even if it is the same. The arrows move the
/// date by a day or a week, without an event.
class NoneDatePicker final : public NoneControl<DatePicker> {
public:
    CalendarDate Date() const override { return Date_; }
    void SetDate(const CalendarDate& date) override { Date_ = date; }

private:
    CalendarDate Date_;
};

/// A real one raises lstHoldMenu_Click when a person has chosen an item, and lstHoldMenu_LostFocus.
class NoneListBox final : public NoneControl<ListBox> {
public:
    void Clear() override {
        Items_.clear();
        Index_ = -1;
    }
    void AddItem(const Text& item) override { Items_.push_back(item); }
    std::int32_t ItemCount() const override { return static_cast<std::int32_t>(Items_.size()); }
    std::int32_t ListIndex() const override { return Index_; }
    void SetListIndex(std::int32_t index) override { Index_ = index; }
    Text ItemText(std::int32_t index) const override {
        return index >= 0 && index < ItemCount() ? Items_[static_cast<std::size_t>(index)] : Text();
    }
    Text Tag() const override { return Tag_; }
    void SetTag(const Text& tag) override { Tag_ = tag; }

private:
    std::vector<Text> Items_;
    std::int32_t Index_ = -1;
    Text Tag_;
};

/// The line that says that the program is busy. A real one is on the screen when Refresh returns.
class NoneLabel final : public NoneFontControl<Label> {
public:
    Text Caption() const override { return Caption_; }
    void SetCaption(const Text& caption) override { Caption_ = caption; }
    void SetBackColor(std::int32_t) override {}
    void SetForeColor(std::int32_t) override {}
    void Refresh() override {}

private:
    Text Caption_;
};

class NoneScrollBar final : public ScrollBar {
public:
    float Width() const override { return 0; }
};

/// A real timer calls its tick handler at the end of each interval while it is enabled.
class NoneTimer final : public Timer {
public:
    bool Enabled() const override { return Enabled_; }
    void SetEnabled(bool enabled) override { Enabled_ = enabled; }
    void SetInterval(std::int32_t) override {}

private:
    bool Enabled_ = false;
};

/// A real one raises its click, such as mnuButton1_Click, and leaves the focus where it is.
class NoneMenuItem final : public MenuItem {
public:
    Text Caption() const override { return Caption_; }
    void SetCaption(const Text& caption) override { Caption_ = caption; }
    bool Visible() const override { return Visible_; }
    void SetVisible(bool visible) override { Visible_ = visible; }
    bool Enabled() const override { return Enabled_; }
    void SetEnabled(bool enabled) override { Enabled_ = enabled; }

private:
    Text Caption_;
    bool Visible_ = false;
    bool Enabled_ = true;
};

/// The grid has the cells that all back-ends share, and is never painted. A real one derives from DrawnGrid, whose
/// Moved and DrawCell are set to the handlers of its two events, and has RaisePainting called in each round of events.
/// Whenever grdMain has been painted (Repainted), grdTitle wants painting too, because it takes its columns from there.
/// A tap gives grdMain the focus, moves the current cell, and raises grdMain_Press and then grdMain_Release; a tap on
/// the title raises grdTitle_Release.
class NoneGrid final : public GridStore {
public:
    void SetFocus() override {}
    void PaintNow() override {}

protected:
    void RowColChanged() override {}
    void PaintCell(const PaintedCell&) override {}
    void LooksChanged() override {}
};

} // namespace backends::none
