// SPDX-License-Identifier: MIT
#include "backends/qt/accessible_window.h"

#include <QAccessibleWidget>
#include <QWidget>

namespace backends::qt {

namespace {

/// Qt presents each plain widget as a filler, also if it is a window with a frame and a title.
QAccessibleInterface* MakeAccessibleWindow(const QString& className, QObject* object) {
    auto* const widget = qobject_cast<QWidget*>(object);
    const bool isPlain = widget != nullptr && className == QLatin1String(widget->metaObject()->className()) &&
                         className == QLatin1String("QWidget");
    return isPlain && widget->isWindow() ? new QAccessibleWidget(widget, QAccessible::Window) : nullptr;
}

} // namespace

void InstallAccessibleWindows() {
    QAccessible::installFactory(MakeAccessibleWindow);
}

} // namespace backends::qt
