// SPDX-License-Identifier: MIT
#include "backends/qt/native_focus.h"

#include <QFocusEvent>

namespace backends::qt {

namespace {

/// True if the user has moved the focus, false if a window or a menu merely returns it.
bool IsChosen(Qt::FocusReason reason) {
    return reason == Qt::MouseFocusReason || reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
           reason == Qt::ShortcutFocusReason || reason == Qt::OtherFocusReason;
}

} // namespace

NativeFocus::NativeFocus(Focus& focus, QWidget& surface) : Focus_(focus), Surface_(surface) {
    Focus_.Moved = [this] { Follow(); };
    Surface_.setFocusPolicy(Qt::NoFocus); // a click beside the controls does not move the focus
}

void NativeFocus::Add(FocusTarget& target, QWidget& widget) {
    Pairs_.push_back({&target, &widget});
    widget.installEventFilter(this);
    if (widget.focusProxy() != nullptr)
        widget.focusProxy()->installEventFilter(this);
}

FocusTarget* NativeFocus::TargetOf(const QWidget* widget) const {
    for (const Pair& pair : Pairs_) {
        if (pair.Widget != nullptr && widget != nullptr && (pair.Widget == widget || pair.Widget->isAncestorOf(widget)))
            return pair.Target;
    }
    return nullptr;
}

bool NativeFocus::TakesKeys(const QWidget* widget) const {
    if (widget == &Surface_)
        return true; // the form itself
    for (const Pair& pair : Pairs_) {
        if (pair.Widget != nullptr && (pair.Widget == widget || pair.Widget->focusProxy() == widget))
            return true;
    }
    return false;
}

QWidget* NativeFocus::WidgetOf(const FocusTarget& target) const {
    for (const Pair& pair : Pairs_) {
        if (pair.Target == &target && pair.Widget != nullptr && !pair.Widget->isHidden())
            return pair.Widget;
    }
    return nullptr;
}

void NativeFocus::Follow() {
    if (Quieted_ > 0)
        return;
    ++Quieted_;
    QWidget* wanted = Focus_.Holder() != nullptr ? WidgetOf(*Focus_.Holder()) : nullptr;
    if (wanted == nullptr || !wanted->isEnabled())
        wanted = &Surface_;
    if (wanted->window()->focusWidget() != wanted)
        wanted->setFocus(Qt::OtherFocusReason);
    --Quieted_;
}

bool NativeFocus::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::FocusIn || Quieted_ > 0)
        return false;
    FocusTarget* const target = TargetOf(qobject_cast<QWidget*>(object));
    if (target != nullptr && IsChosen(static_cast<QFocusEvent*>(event)->reason()))
        Focus_.MoveTo(*target);
    return false;
}

} // namespace backends::qt
