// SPDX-License-Identifier: MIT
#include "apps/quorin/start_refusal.h"

#include "apps/start/exit_status.h"
#include "backends/qt/window_icon.h"

#include <QApplication>
#include <QMessageBox>

#include <cstdlib>
#include <iostream>
#include <unistd.h>

namespace quorin {

namespace {

/// Fatal is a display that is named but does not answer. Standard error has the refusal already.
void EndWithoutBox(QtMsgType type, const QMessageLogContext&, const QString&) {
    if (type == QtFatalMsg)
        std::_Exit(NumberOf(start::ExitStatus::NotStarted));
}

/// True if a person can see and close a box.
bool IsSeen() {
    const QString platform = QGuiApplication::platformName();
    return platform != QStringLiteral("offscreen") && platform != QStringLiteral("minimal");
}

} // namespace

bool HasDisplay() {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        const char* const value = std::getenv(name);
        if (value != nullptr && *value != '\0')
            return true;
    }
    return false;
}

void TellRefusal(const std::string& lines) {
    std::cerr << lines << std::flush;
    if (::isatty(STDERR_FILENO) == 1 || !HasDisplay())
        return;
    qInstallMessageHandler(EndWithoutBox);
    int count = 1;
    char name[] = "quorin";
    char* words[] = {name, nullptr};
    const QApplication application(count, words);
    if (!IsSeen())
        return;
    QApplication::setDesktopFileName(QStringLiteral("quorin"));
    QApplication::setWindowIcon(backends::qt::WindowIcon());
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Quorin is not started"),
                    QString::fromStdString(lines).trimmed());
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    box.exec();
}

} // namespace quorin
