// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>
#include <QWidget>

namespace backends::qt {

/// The way to the screen reader. A test replaces both functions.
struct ToScreenReader {
    static inline bool (*IsActive)() = QAccessible::isActive;
    static inline void (*Send)(QAccessibleEvent*) = QAccessible::updateAccessibility;
};

/// Lets the screen reader say the accessible name of a widget.
inline void Announce(QWidget& widget) {
    if (!ToScreenReader::IsActive())
        return;
    QAccessibleEvent alert(&widget, QAccessible::Alert);
    ToScreenReader::Send(&alert);
}

} // namespace backends::qt
