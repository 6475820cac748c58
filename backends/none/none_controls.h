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
    Box Bounds() const override { return bounds_; }
    void SetBounds(const Box& box) override { bounds_ = box; }
    bool Visible() const override { return visible_; }
    void SetVisible(bool visible) override { visible_ = visible; }
    bool Enabled() const override { return enabled_; }
    void SetEnabled(bool enabled) override { enabled_ = enabled; }
    void SetFocus() override {}

private:
    Box bounds_;
    bool visible_ = false;
    bool enabled_ = true;
};

/// A control with a font. A platform that lacks the font or the size may round: the application reads it back.
template <class Interface>
class NoneFontControl : public NoneControl<Interface> {
public:
    Text FontName() const override { return fontName_; }
    void SetFontName(const Text& name) override { fontName_ = name; }
    std::int32_t FontSize() const override { return fontSize_; }
    void SetFontSize(std::int32_t size) override { fontSize_ = size; }

private:
    Text fontName_;
    std::int32_t fontSize_ = 8;
};

/// A real form calls Form_QueryUnload and Form_Unload when it is to be closed.
class NoneForm final : public Form {
public:
    Box Bounds() const override { return twips_; }
    void SetBounds(const Box& twips) override { twips_ = twips; }
    Box ClientArea() const override {
        return {0, 0, twips_.Width / TwipsPerPixelX(), twips_.Height / TwipsPerPixelY()};
    }
    float TwipsPerPixelX() const override { return 15; }
    float TwipsPerPixelY() const override { return 15; }

private:
    Box twips_{0, 0, 240 * 15, 320 * 15};
};

/// A real text box raises txtInputField_Change at each change, also at one that the program makes.
class NoneTextBox final : public NoneFontControl<TextBox> {
public:
    Text Contents() const override { return contents_; }
    void SetContents(const Text& text) override { contents_ = text; }
    bool MultiLine() const override { return multiLine_; }
    void SetMultiLine(bool multiLine) override { multiLine_ = multiLine; }
    void Commit() override {}
    void Select(std::int32_t, std::int32_t) override {}

private:
    Text contents_;
    bool multiLine_ = false;
};

class NoneComboBox final : public NoneFontControl<ComboBox> {
public:
    Text Contents() const override { return contents_; }
    void SetContents(const Text& text) override { contents_ = text; }
    void Select(std::int32_t, std::int32_t) override {}
    void Clear() override { items_ = 0; }
    void AddItem(const Text&) override { ++items_; }
    std::int32_t ItemCount() const override { return items_; }

private:
    Text contents_;
    std::int32_t items_ = 0;
};

/// A real one raises dteInputField_Closed when a person has chosen a date.
class NoneDatePicker final : public NoneControl<DatePicker> {
public:
    CalendarDate Date() const override { return date_; }
    void SetDate(const CalendarDate& date) override { date_ = date; }

private:
    CalendarDate date_;
};

class NoneListBox final : public NoneControl<ListBox> {
public:
    void Clear() override { items_.clear(); }
    void AddItem(const Text& item) override { items_.push_back(item); }
    std::int32_t ItemCount() const override { return static_cast<std::int32_t>(items_.size()); }
    std::int32_t ListIndex() const override { return index_; }
    void SetListIndex(std::int32_t index) override { index_ = index; }
    Text ItemText(std::int32_t index) const override {
        return index >= 0 && index < ItemCount() ? items_[static_cast<std::size_t>(index)] : Text();
    }
    Text Tag() const override { return tag_; }
    void SetTag(const Text& tag) override { tag_ = tag; }

private:
    std::vector<Text> items_;
    std::int32_t index_ = -1;
    Text tag_;
};

class NoneLabel final : public NoneFontControl<Label> {
public:
    Text Caption() const override { return caption_; }
    void SetCaption(const Text& caption) override { caption_ = caption; }
    void SetBackColor(std::int32_t) override {}
    void SetForeColor(std::int32_t) override {}
    void Refresh() override {}

private:
    Text caption_;
};

class NoneScrollBar final : public ScrollBar {
public:
    float Width() const override { return 0; }
};

/// A real timer calls its tick handler at the end of each interval while it is enabled.
class NoneTimer final : public Timer {
public:
    bool Enabled() const override { return enabled_; }
    void SetEnabled(bool enabled) override { enabled_ = enabled; }
    void SetInterval(std::int32_t) override {}

private:
    bool enabled_ = false;
};

/// A real one raises its click.
class NoneMenuItem final : public MenuItem {
public:
    Text Caption() const override { return caption_; }
    void SetCaption(const Text& caption) override { caption_ = caption; }
    bool Visible() const override { return visible_; }
    void SetVisible(bool visible) override { visible_ = visible; }
    bool Enabled() const override { return enabled_; }
    void SetEnabled(bool enabled) override { enabled_ = enabled; }

private:
    Text caption_;
    bool visible_ = true;
    bool enabled_ = true;
};

/// The grid has the cells that all back-ends share, and is never painted. A real one derives from DrawnGrid, calls
/// grdMain_RowColChange from RowColChanged, and paints by grdMain_DrawCell.
class NoneGrid final : public GridStore {
public:
    void SetFocus() override {}
    void PaintNow() override {}

protected:
    void RowColChanged() override {}
    void PaintCell(const CellToPaint&) override {}
    void LooksChanged() override {}
};

} // namespace backends::none
