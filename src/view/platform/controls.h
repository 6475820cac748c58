// SPDX-License-Identifier: MIT
// The controls of the one form. A back-end owns them. The application calls them, and the back-end reports their events
// through the handlers of frmQuorin. Sizes and places are in pixels, except for the form's own box, which is in twips.
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

/// The operations of every control. At first each is enabled, a grid is visible, and any other control is hidden. A
/// control that has the focus loses it when it is hidden, and keeps it while it is disabled. Nothing that the
/// application sets raises an event but what is said so here and at OwnerDrawGrid.
class Control {
public:
    virtual ~Control() = default;

    virtual Box Bounds() const = 0;
    virtual void SetBounds(const Box& box) = 0;

    virtual bool Visible() const = 0;
    virtual void SetVisible(bool visible) = 0;

    virtual bool Enabled() const = 0;
    virtual void SetEnabled(bool enabled) = 0;

    /// Raises the lost-focus event of the control that had the focus, then the got-focus event of this one. Does
    /// nothing for a control that is hidden or disabled. A control that has the focus already keeps it without an
    /// event.
    virtual void SetFocus() = 0;
};

/// A control with a font of its own.
class FontControl : public Control {
public:
    virtual Text FontName() const = 0;
    virtual void SetFontName(const Text& name) = 0;

    virtual std::int32_t FontSize() const = 0;
    /// If the platform lacks the size, it may round it or leave it as it was: read it back.
    virtual void SetFontSize(std::int32_t size) = 0;
};

/// Twips to a pixel on a screen of 96 pixels to the inch; an inch has 1440.
inline constexpr float TwipsPerPixel = 15;

/// The form. Its box is in twips. Its client area is in pixels, relative to the form.
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
    /// Raises the change event, even if the text is the same: a call by the program counts as a change. The caret stays
    /// where it is, as far as there is text.
    virtual void SetContents(const Text& text) = 0;

    virtual bool MultiLine() const = 0;
    virtual void SetMultiLine(bool multiLine) = 0;

    /// Makes the text that an input method is still composing part of the contents, with the change event.
    virtual void Commit() = 0;

    /// Puts the caret after `position` characters and selects the `length` characters that follow, as far as there is
    /// text.
    virtual void Select(std::int32_t position, std::int32_t length) = 0;
};

class ComboBox : public FontControl {
public:
    virtual Text Contents() const = 0;
    virtual void SetContents(const Text& text) = 0;
    virtual void Select(std::int32_t position, std::int32_t length) = 0; ///< as in a text box

    virtual void Clear() = 0;                   ///< removes the items and the text
    virtual void AddItem(const Text& item) = 0; ///< the text stays
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
    virtual void SetDate(const CalendarDate& date) = 0; ///< REQUIRES: a date that exists in the calendar
};

class ListBox : public Control {
public:
    virtual void Clear() = 0; ///< removes the items; ListIndex is -1 then
    virtual void AddItem(const Text& item) = 0;
    virtual std::int32_t ItemCount() const = 0;
    virtual std::int32_t ListIndex() const = 0;          ///< 0-based, -1 for none
    virtual void SetListIndex(std::int32_t index) = 0;   ///< REQUIRES: -1 or the index of an item
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

/// Only used to find the width of a scroll bar. It is not moved and has no handlers.
class ScrollBar {
public:
    virtual ~ScrollBar() = default;
    virtual float Width() const = 0;
};

/// Raises its tick at the end of each interval while it is enabled. Enabling a stopped timer starts a full interval;
/// enabling a running one changes nothing.
class Timer {
public:
    virtual ~Timer() = default;
    virtual bool Enabled() const = 0;
    virtual void SetEnabled(bool enabled) = 0;
    virtual void SetInterval(std::int32_t milliseconds) = 0;
};

/// A top-level soft menu or one of its items; raises a click event. At first it is enabled and hidden. Its operations
/// report no failure.
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
