// SPDX-License-Identifier: MIT
// The form's input controls, built from Qt's widgets, so that input methods, the clipboard, touch and screen readers
// work with them as in other programs. Values that the application sets are kept beside the widget and returned as they
// were set.
#pragma once

#include "backends/loop/form_controls.h"
#include "backends/qt/conversions.h"
#include "backends/qt/fonts.h"
#include "backends/qt/form_canvas.h"
#include "backends/qt/native_focus.h"

#include <QCalendarWidget>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>

#include <functional>

namespace backends::qt {

/// Place, visibility and focus of a control.
template <class Interface>
class NativeControl : public Interface, public FocusTarget {
public:
    NativeControl(FormCanvas& form, Focus& focus, NativeFocus& native, const char* name)
        : Form_(form), Focus_(focus), Native_(native) {
        Name = name;
        form.Follow([this] { FollowScale(); });
    }

    Box Bounds() const override { return Bounds_; }
    void SetBounds(const Box& box) override {
        Bounds_ = box;
        Show();
    }
    bool Visible() const override { return Visible_; }
    void SetVisible(bool visible) override {
        Visible_ = visible;
        if (!visible)
            Focus_.TakeFrom(*this);
        if (visible && NameForPeople)
            TakeName(ToQt(NameForPeople()));
        Show();
    }
    bool Enabled() const override { return Enabled_; }
    void SetEnabled(bool enabled) override {
        Enabled_ = enabled;
        Show();
    }
    void SetFocus() override {
        if (Visible_ && Enabled_)
            Focus_.MoveTo(*this);
    }

    std::function<Text()> NameForPeople; ///< returns the name for a screen reader; called when the control is shown

protected:
    /// Returns the widget that represents the control at the moment.
    virtual QWidget& Widget() = 0;

    /// Applies the control's state to the widget.
    virtual void Show() {
        const NativeFocus::Quiet quiet(Native_);
        Widget().setGeometry(Form_.Shown(Bounds_));
        Widget().setEnabled(Enabled_);
        Widget().setVisible(Visible_);
        if (Visible_)
            Widget().raise();
    }

    /// Called after the scale has changed.
    virtual void FollowScale() { Show(); }

    virtual void TakeName(const QString& name) { Widget().setAccessibleName(name); }

    NativeFocus& FocusOfQt() { return Native_; }
    const FormCanvas& Form() const { return Form_; }

private:
    FormCanvas& Form_;
    Focus& Focus_;
    NativeFocus& Native_;
    Box Bounds_;
    bool Visible_ = false;
    bool Enabled_ = true;
};

template <class Interface>
class NativeFontControl : public NativeControl<Interface> {
public:
    using NativeControl<Interface>::NativeControl;
    Text FontName() const override { return Font_; }
    void SetFontName(const Text& name) override {
        Font_ = name;
        TakeFont(this->Form().Shown(FontOf(Font_, Size_)));
    }
    std::int32_t FontSize() const override { return Size_; }
    void SetFontSize(std::int32_t size) override {
        Size_ = size;
        TakeFont(this->Form().Shown(FontOf(Font_, Size_)));
    }

protected:
    void FollowScale() override {
        TakeFont(this->Form().Shown(FontOf(Font_, Size_)));
        this->Show();
    }
    virtual void TakeFont(const QFont& font) { this->Widget().setFont(font); }

private:
    Text Font_;
    std::int32_t Size_ = 0;
};

/// Keeps the text that an input method has composed and not committed yet.
template <class Edit>
class Composing : public Edit {
public:
    using Edit::Edit;
    QString Held;

protected:
    void inputMethodEvent(QInputMethodEvent* event) override {
        Held = event->preeditString();
        Edit::inputMethodEvent(event);
    }
};

/// A text box of one line or of several: two widgets, of which the wanted one is visible.
class QtTextBox final : public NativeFontControl<EditBox> {
public:
    QtTextBox(FormCanvas& form, Focus& focus, NativeFocus& native, const char* name);

    Text Contents() const override { return Value_; }
    void SetContents(const Text& text) override;
    bool MultiLine() const override { return Lines_; }
    void SetMultiLine(bool multiLine) override;
    void Commit() override;
    void Select(std::int32_t position, std::int32_t length) override;
    std::int32_t Caret() const override;

    bool TakesText() const override { return true; }
    void EnterCharacter(TextView character) override;
    void ReplaceText(const Text& text) override;

    std::function<void()> Change;

protected:
    QWidget& Widget() override;
    void Show() override;
    void TakeFont(const QFont& font) override;

private:
    void Fill();
    void Edited();

    Composing<QLineEdit>& Line_;
    Composing<QPlainTextEdit>& Page_;
    Text Value_; ///< as it was set, until the user edits it
    bool Lines_ = false;
    bool Filling_ = false;
};

class QtComboBox final : public NativeFontControl<EditCombo> {
public:
    QtComboBox(FormCanvas& form, Focus& focus, NativeFocus& native, const char* name);

    Text Contents() const override { return FromQt(Combo_.currentText()); }
    void SetContents(const Text& text) override { Combo_.setEditText(ToQt(text)); }
    void Select(std::int32_t position, std::int32_t length) override;
    std::int32_t Caret() const override;
    void Clear() override {
        Combo_.clear();
        Combo_.clearEditText();
    }
    void AddItem(const Text& item) override;
    std::int32_t ItemCount() const override { return Combo_.count(); }
    std::vector<Text> Items() const override;

    bool TakesText() const override { return true; }
    void EnterCharacter(TextView character) override;
    void ReplaceText(const Text& text) override;

protected:
    QWidget& Widget() override { return Combo_; }
    void TakeName(const QString& name) override;
    void Show() override;
    void TakeFont(const QFont& font) override;

private:
    QComboBox& Combo_;
};

/// A calendar. A click chooses a date; the arrow keys move the selection, and Enter chooses it.
class QtDatePicker final : public NativeControl<DatePicker> {
public:
    QtDatePicker(FormCanvas& form, Focus& focus, NativeFocus& native, const char* name);

    CalendarDate Date() const override { return Chosen_; }
    void SetDate(const CalendarDate& date) override;
    QCalendarWidget& Calendar() { return Month_; }

    std::function<void()> Closed;

protected:
    QWidget& Widget() override { return Month_; }
    void TakeName(const QString& name) override;
    void Show() override;

private:
    void NameButtons();

    QCalendarWidget& Month_;
    CalendarDate Chosen_;
};

class QtListBox final : public NativeControl<ListBox> {
public:
    QtListBox(FormCanvas& form, Focus& focus, NativeFocus& native, const char* name);

    void Clear() override { List_.clear(); }
    void AddItem(const Text& item) override { List_.addItem(ToQt(item)); }
    std::int32_t ItemCount() const override { return List_.count(); }
    std::int32_t ListIndex() const override { return List_.currentRow(); }
    void SetListIndex(std::int32_t index) override { List_.setCurrentRow(index); }
    Text ItemText(std::int32_t index) const override;
    Text Tag() const override { return Tag_; }
    void SetTag(const Text& tag) override { Tag_ = tag; }

    std::function<void()> Click;

protected:
    QWidget& Widget() override { return List_; }
    void Show() override;

private:
    QListWidget& List_;
    Text Tag_;
};

class QtLabel final : public NativeFontControl<Label> {
public:
    QtLabel(FormCanvas& form, Focus& focus, NativeFocus& native, const char* name);

    void SetVisible(bool visible) override;
    Text Caption() const override { return Value_; }
    void SetCaption(const Text& caption) override;
    void SetBackColor(std::int32_t colour) override;
    void SetForeColor(std::int32_t colour) override;
    void Refresh() override;

    std::function<void()> Painted; ///< called after a repaint while it is visible
    std::function<void()> Hiding;  ///< called before it is hidden
    std::function<void()> Hidden;

protected:
    QWidget& Widget() override { return Strip_; }

private:
    QLabel& Strip_;
    Text Value_;
};

} // namespace backends::qt
