// SPDX-License-Identifier: MIT
// Keeps Qt's focus where the form's is. The form's is the one that counts: it stays where it was while another window
// is in front, a menu is open or the control is disabled, none of which the application is to hear of.
#pragma once

#include "backends/loop/focus.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <vector>

namespace backends::qt {

class NativeFocus final : public QObject {
public:
    /// `surface` takes Qt's focus while no control has the form's.
    NativeFocus(Focus& focus, QWidget& surface);

    /// The widget takes Qt's focus for that control; a control may have several of them, of which the one that is on
    /// show counts.
    void Add(FocusTarget& target, QWidget& widget);

    /// The control that a widget, or one inside of it, stands for; nothing for any other.
    FocusTarget* TargetOf(const QWidget* widget) const;
    /// The widget of a control that is on show; nothing when none is.
    QWidget* WidgetOf(const FocusTarget& target) const;

    /// Whether the widget takes the keys of a control itself, and is no part of one that has a use of its own for them,
    /// as the box for the year in a calendar has.
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
