// SPDX-License-Identifier: MIT
// The console's commands on a device in an invisible window: each command is a click or a key on a real widget. Fonts
// have the sizes of the console, unless QUORIN_WINDOW_FONTS asks for the window's own.
#include "apps/quorin-console/console_main.h"
#include "backends/headless/font_server.h"
#include "backends/headless/headless_controls.h"
#include "tests/support/window_hand.h"

#include <QApplication>

namespace {

start::ExitStatus RunInWindow(const console::Options& options, console::Session& session) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int count = 1;
    char name[] = "window-console";
    char* words[] = {name, nullptr};
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {}); // about what this screen lacks
    QApplication application(count, words);
    QApplication::setQuitOnLastWindowClosed(false);
    backends::headless::HeadlessFonts fonts;
    backends::qt::WindowOptions looks;
    if (!qEnvironmentVariableIsSet("QUORIN_WINDOW_FONTS")) {
        looks.Fonts = &fonts;
        looks.ScrollBarWidth = backends::headless::UsualBarWidth;
    }
    looks.Profile = backends::ProfileOfType(options.Device.DeviceType);
    backends::qt::QtPump pump([&session](const backends::ProgramOver& over) { return NumberOf(session.Over(over)); });
    backends::HostDevice host(options.Device);
    backends::qt::QtPlatform device(host, looks, pump, session, session.Out());
    windowtest::WindowHand user(device);
    session.Use(device, user);
    session.Run();
}

} // namespace

int main(int count, char** words) {
    return NumberOf(console::ConsoleMain(count, words, RunInWindow));
}
