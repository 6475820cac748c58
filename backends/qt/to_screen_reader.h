// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>
#include <QString>
#include <QWidget>

namespace backends::qt {

/// The way to the screen reader. A test replaces both functions.
struct ToScreenReader {
    static inline bool (*IsActive)() = QAccessible::isActive;
    static inline void (*Send)(QAccessibleEvent*) = QAccessible::updateAccessibility;
};

/// Lets the screen reader say these words on behalf of a widget, which need not be visible. It asks for them later, so
/// that words which follow at once replace them.
void Announce(QWidget& widget, const QString& words);
/// Lets it say the accessible name of the widget.
inline void Announce(QWidget& widget) {
    Announce(widget, widget.accessibleName());
}

} // namespace backends::qt
