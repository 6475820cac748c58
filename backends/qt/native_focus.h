// SPDX-License-Identifier: MIT
// Keeps Qt's focus where the form's focus is. The form's focus decides: it does not change while another window is
// active, a menu is open or the control is disabled, and the application gets no event for these.
#pragma once

#include "backends/loop/focus.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <vector>

namespace backends::qt {

class NativeFocus final : public QObject {
public:
    /// `surface` has Qt's focus while no control has the form's.
    NativeFocus(Focus& focus, QWidget& surface);

    /// Adds a widget that takes Qt's focus for a control. A control may have several widgets, of which the visible one
    /// is used.
    void Add(FocusTarget& target, QWidget& widget);

    /// Returns the control that this widget, or one that contains it, was added for; null for any other widget.
    FocusTarget* TargetOf(const QWidget* widget) const;
    /// Returns the visible widget of a control; null if none is visible.
    QWidget* WidgetOf(const FocusTarget& target) const;

    /// True if the widget takes the keys of a control or of the form itself. False for a part of a control that uses
    /// keys in its own way, such as the year box of a calendar.
    bool TakesKeys(const QWidget* widget) const;

    /// Sets Qt's focus to the control that has the form's focus.
    void Follow();

    /// While one exists, changes of Qt's focus do not change the form's focus.
    class Quiet {
    public:
        explicit Quiet(NativeFocus& focus) : Focus_(focus) { ++Focus_.Quieted_; }
        ~Quiet() {
            --Focus_.Quieted_;
            Focus_.Follow();
        }
        Quiet(const Quiet&) = delete;
        Quiet& operator=(const Quiet&) = delete;

    private:
        NativeFocus& Focus_;
    };

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    struct Pair {
        FocusTarget* Target;
        QPointer<QWidget> Widget;
    };

    Focus& Focus_;
    QWidget& Surface_;
    std::vector<Pair> Pairs_;
    int Quieted_ = 0;
};

} // namespace backends::qt
