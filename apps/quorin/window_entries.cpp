// SPDX-License-Identifier: MIT
#include "apps/quorin/window_entries.h"

namespace quorin {

void AddZoomEntries(backends::qt::WindowMenu& menu, WindowZoom& zoom) {
    // The key of the sign above the equals sign, too: it is the one that people press.
    menu.Add({.Name = QStringLiteral("&Larger"), .Keys = {}, .Runs = [&zoom] { zoom.Larger(); }})
        .setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    menu.Add({QStringLiteral("&Smaller"), QKeySequence(Qt::CTRL | Qt::Key_Minus), [&zoom] { zoom.Smaller(); }});
    menu.Add({QStringLiteral("&Usual size"), QKeySequence(Qt::CTRL | Qt::Key_0), [&zoom] { zoom.Usual(); }});
}

// A line an entry, from the top of the menu to its foot.

void FillWindowMenu(backends::qt::QtPlatform& device, DataFolder& data, Arriving& arriving, WindowPorts& ports,
                    WindowHints& hints, WindowExport& exports, WindowHandOver& handOver, WindowHelp& help,
                    WindowZoom& zoom) {
    backends::qt::Window& window = device.window;
    window.Menu().Add({QStringLiteral("&Install a driver…"), QKeySequence(Qt::CTRL | Qt::Key_O),
                       [&arriving] { arriving.ChooseFiles(); }});
    window.Menu().Add({QStringLiteral("Open the &data folder"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O),
                       [&data] { data.Open(); }});
    window.Menu().Add({QStringLiteral("E&xport…"), QKeySequence(Qt::CTRL | Qt::Key_E), [&exports] { exports.Open(); }});
    window.Menu().Add({.Name = QStringLiteral("Hand &over…"), .Keys = {}, .Runs = [&handOver] { handOver.Open(); }});
    window.Menu().Add(window.ReadingsAction());
    window.Menu().Add(window.NoticesAction());
    window.Menu().Add({.Name = QStringLiteral("&Ports…"), .Keys = {}, .Runs = [&ports] { ports.OpenDialog(); }});
    QAction& shown = window.Menu().Add(
        {.Name = QStringLiteral("&Hints"), .Keys = {}, .Runs = [&hints] { hints.SetOn(!hints.AreOn()); }});
    shown.setCheckable(true);
    QObject::connect(&window.Menu().List(), &QMenu::aboutToShow, &shown,
                     [&hints, &shown] { shown.setChecked(hints.AreOn()); });
    AddZoomEntries(window.Menu(), zoom);
    window.Menu().Add(window.HelpAction());
    window.Menu().Add(
        {.Name = QStringLiteral("Recovery &card"), .Keys = {}, .Runs = [&help] { help.Open(RecoveryCard); }});
    window.Menu().Add(
        {.Name = QStringLiteral("Report a pro&blem…"), .Keys = {}, .Runs = [&help] { help.ReportProblem(); }});
    window.Menu().Add({.Name = QStringLiteral("&About"), .Keys = {}, .Runs = [&help] { help.Open(PageOfProgram); }});
}

} // namespace quorin
