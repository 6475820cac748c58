// SPDX-License-Identifier: MIT
// Keeps Qt's focus where the form's is. The form's is the one that counts: it stays where it was while another window
// is in front, a menu is open or the control is disabled, none of which the application is to hear of.
#pragma once

#include "backends/loop/focus.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <vector>

namespace platform::qt {

class NativeFocus final : public QObject {
public:
    /// `surface` takes Qt's focus while no control has the form's.
    NativeFocus(device::Focus& focus, QWidget& surface);

    /// The widget takes Qt's focus for that control; a control may have several of them, of which the one that is on
    /// show counts.
    void Add(device::FocusTarget& target, QWidget& widget);

    /// The control that a widget, or one inside of it, stands for; nothing for any other.
    device::FocusTarget* TargetOf(const QWidget* widget) const;
    /// The widget of a control that is on show; nothing when none is.
    QWidget* WidgetOf(const device::FocusTarget& target) const;

    /// Whether the widget takes the keys of a control itself, and is no part of one that has a use of its own for them,
    /// as the box for the year in a calendar has.
    bool TakesKeys(const QWidget* widget) const;

    /// Puts Qt's focus where the form's is.
    void Follow();

    /// While one stands, what Qt does with its focus is nobody's choice.
    class Quiet {
    public:
        explicit Quiet(NativeFocus& focus) : Of(focus) { ++Of.Quieted; }
        ~Quiet() {
            --Of.Quieted;
            Of.Follow();
        }
        Quiet(const Quiet&) = delete;
        Quiet& operator=(const Quiet&) = delete;

    private:
        NativeFocus& Of;
    };

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    struct Pair {
        device::FocusTarget* Target;
        QPointer<QWidget> Widget;
    };

    device::Focus& FocusOfForm;
    QWidget& Surface;
    std::vector<Pair> Pairs;
    int Quieted = 0;
};

} // namespace platform::qt
