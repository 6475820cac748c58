// SPDX-License-Identifier: MIT
#include "backends/qt/window_icon.h"

/// The linker leaves out resources of a library that nothing names.
static void UseBuiltInIcons() {
    Q_INIT_RESOURCE(icons);
}

namespace backends::qt {

QIcon WindowIcon() {
    UseBuiltInIcons();
    QIcon builtIn;
    for (const char* name : {":/quorin-48.png", ":/quorin-128.png", ":/quorin-256.png"})
        builtIn.addFile(QString::fromLatin1(name));
    return QIcon::fromTheme(QStringLiteral("quorin"), builtIn);
}

} // namespace backends::qt
