// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>

namespace backends::qt {

/// The way to the screen reader. A test replaces both functions.
struct ToScreenReader {
    static inline bool (*IsActive)() = QAccessible::isActive;
    static inline void (*Send)(QAccessibleEvent*) = QAccessible::updateAccessibility;
};

} // namespace backends::qt
