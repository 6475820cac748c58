// SPDX-License-Identifier: MIT
// The controls of the one form. A back-end owns them; the application only ever calls them, and hears from them through
// the event handlers of frmQuorin. Sizes and places are pixels, but for the form's own box, which is twips.
#pragma once

#include "src/text/text.h"

namespace platform {

struct Box {
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    bool operator==(const Box&) const = default;
};

/// What every control can do. Hiding the control that has the focus takes the focus away from it.
class Control {
public:
    virtual ~Control() = default;

    virtual Box Bounds() const = 0;
    virtual void SetBounds(const Box& box) = 0;

    virtual bool Visible() const = 0;
    virtual void SetVisible(bool visible) = 0;

    virtual bool Enabled() const = 0;
    virtual void SetEnabled(bool enabled) = 0;

    /// Raises the lost-focus event of the control that had the focus, then the got-focus event of this one. A control
    /// that is hidden or disabled takes no focus, and nothing happens. A control that has it already keeps it without
    /// an event.
    virtual void SetFocus() = 0;
};

/// A control that shows text in a font of its own.
class FontControl : public Control {
public:
    virtual Text FontName() const = 0;
    virtual void SetFontName(const Text& name) = 0;

    virtual std::int32_t FontSize() const = 0;
    /// May leave the size as it was, or round it, where the platform lacks it: read it back.
    virtual void SetFontSize(std::int32_t size) = 0;
};

/// The form. Its box is in twips; its client area is in pixels, relative to the form.
class Form {
public:
    virtual ~Form() = default;
    virtual Box Bounds() const = 0;
    virtual void SetBounds(const Box& twips) = 0;
    virtual Box ClientArea() const = 0;
    virtual float TwipsPerPixelX() const = 0;
    virtual float TwipsPerPixelY() const = 0;
};

class TextBox : public FontControl {
public:
    virtual Text Contents() const = 0;
    /// Raises the change event, also where the text is the same: what the program sets counts as a change.
    virtual void SetContents(const Text& text) = 0;

    virtual bool MultiLine() const = 0;
    virtual void SetMultiLine(bool multiLine) = 0;

    /// What an input method has composed and still holds becomes part of the text, with the change event.
    virtual void Commit() = 0;

    /// Puts the caret behind `position` characters and selects the `length` characters that follow it.
    virtual void Select(std::int32_t position, std::int32_t length) = 0;
};

class ComboBox : public FontControl {
public:
    virtual Text Contents() const = 0;
    virtual void SetContents(const Text& text) = 0;
    virtual void Select(std::int32_t position, std::int32_t length) = 0;

    virtual void Clear() = 0;
    virtual void AddItem(const Text& item) = 0;
    virtual std::int32_t ItemCount() const = 0;
};

struct CalendarDate {
    std::int32_t Year = 0;
    std::int32_t Month = 0; ///< 1 to 12
    std::int32_t Day = 0;   ///< 1 to 31
    bool operator==(const CalendarDate&) const = default;
};

/// Raises its closed event when the user has chosen a date.
class DatePicker : public Control {
public:
    virtual CalendarDate Date() const = 0;
    virtual void SetDate(const CalendarDate& date) = 0; ///< a date of the calendar; the caller has seen to that
};

class ListBox : public Control {
public:
    virtual void Clear() = 0;
    virtual void AddItem(const Text& item) = 0;
    virtual std::int32_t ItemCount() const = 0;
    virtual std::int32_t ListIndex() const = 0; ///< 0-based, -1 for none
    virtual void SetListIndex(std::int32_t index) = 0;
    virtual Text ItemText(std::int32_t index) const = 0; ///< empty for an index out of range
    virtual Text Tag() const = 0;
    virtual void SetTag(const Text& tag) = 0;
};

class Label : public FontControl {
public:
    virtual Text Caption() const = 0;
    virtual void SetCaption(const Text& caption) = 0;
    virtual void SetBackColor(std::int32_t colour) = 0; ///< 0xBBGGRR
    virtual void SetForeColor(std::int32_t colour) = 0; ///< 0xBBGGRR
    virtual void Refresh() = 0;                         ///< paints it at once, before the call returns
};

/// Nothing moves it or listens to it: it is the measure of the width that a scroll bar takes.
class ScrollBar {
public:
    virtual ~ScrollBar() = default;
    virtual float Width() const = 0;
};

/// Raises its tick at each end of its interval while it is enabled. Enabling a stopped timer starts a whole interval
/// anew; enabling a running one changes nothing.
class Timer {
public:
    virtual ~Timer() = default;
    virtual bool Enabled() const = 0;
    virtual void SetEnabled(bool enabled) = 0;
    virtual void SetInterval(std::int32_t milliseconds) = 0;
};

/// A top-level soft menu or one of its items; raises a click event. Setting it never fails where anyone could tell.
class MenuItem {
public:
    virtual ~MenuItem() = default;
    virtual Text Caption() const = 0;
    virtual void SetCaption(const Text& caption) = 0;
    virtual bool Visible() const = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual bool Enabled() const = 0;
    virtual void SetEnabled(bool enabled) = 0;
};

} // namespace platform
