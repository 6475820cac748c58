// SPDX-License-Identifier: MIT
#include "backends/qt/dialogue.h"

#include <QApplication>
#include <QEvent>

namespace backends::qt {

Dialogue::Dialogue(QWidget* parent, bool underHands) : QMessageBox(parent) {
    if (parent != nullptr)
        addActions(parent->actions());
    if (!underHands)
        return;
    Rest_.start();
    qApp->installEventFilter(this);
}

bool Dialogue::eventFilter(QObject* object, QEvent* event) {
    constexpr qint64 Rested = 500; // milliseconds
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease ||
                       event->type() == QEvent::ShortcutOverride;
    const bool isMine = object->isWidgetType() && static_cast<QWidget*>(object)->window() == this;
    if (!isKey || !isMine || !Rest_.isValid())
        return QMessageBox::eventFilter(object, event);
    if (Rest_.elapsed() >= Rested) {
        Rest_.invalidate();
        return false;
    }
    Rest_.start();
    return true;
}

} // namespace backends::qt
