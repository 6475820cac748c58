// SPDX-License-Identifier: MIT
#include "backends/qt/window_menu.h"

#include <QShortcut>

namespace backends::qt {

WindowMenu::WindowMenu(QWidget* window) : QToolButton(window), List_(this) {
    setObjectName(QStringLiteral("windowMenu"));
    setText(QStringLiteral("☰"));
    setAccessibleName(QStringLiteral("Window menu"));
    setToolTip(QStringLiteral("Window menu (Shift+F10)"));
    setFocusPolicy(Qt::NoFocus);
    setAutoRaise(true);
    setStyleSheet(QStringLiteral("QToolButton::menu-indicator { image: none; }")); // the sign says it
    List_.setObjectName(QStringLiteral("windowMenuList"));
    List_.setAccessibleName(accessibleName());
    addAction(List_.menuAction()); // without this the keys of the entries would do nothing
    QObject::connect(this, &QToolButton::clicked, [this] { Open(); });
    for (const QKeySequence& keys : {QKeySequence(Qt::SHIFT | Qt::Key_F10), QKeySequence(Qt::Key_Menu)}) {
        auto* const shortcut = new QShortcut(keys, this);
        QObject::connect(shortcut, &QShortcut::activated, [this] { Open(); });
    }
}

QAction& WindowMenu::Add(const WindowEntry& entry) {
    QAction& action = *List_.addAction(entry.Name);
    action.setShortcut(entry.Keys);
    action.setAutoRepeat(false);
    action.setShortcutVisibleInContextMenu(true);
    QObject::connect(&action, &QAction::triggered, [runs = entry.Runs] { runs(); });
    return action;
}

void WindowMenu::Add(QAction& action) {
    action.setShortcutVisibleInContextMenu(true);
    List_.addAction(&action);
}

void WindowMenu::Open() {
    if (List_.isEmpty())
        return;
    const QSize size = List_.sizeHint();
    List_.popup(mapToGlobal(QPoint(width() - size.width(), -size.height())));
    List_.setActiveAction(List_.actions().front());
}

} // namespace backends::qt
