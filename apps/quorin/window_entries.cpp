// SPDX-License-Identifier: MIT
#include "apps/quorin/window_entries.h"

namespace quorin {

// A line an entry, from the top of the menu to its foot.

void FillWindowMenu(backends::qt::QtPlatform& device, DataFolder& data, Arriving& arriving, WindowPorts& ports,
                    WindowHints& hints, WindowHelp& help) {
    backends::qt::Window& window = device.window;
    window.Menu().Add({QStringLiteral("&Install a driver…"), QKeySequence(Qt::CTRL | Qt::Key_O),
                       [&arriving] { arriving.ChooseFiles(); }});
    window.Menu().Add({QStringLiteral("Open the &data folder"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O),
                       [&data] { data.Open(); }});
    window.Menu().Add(window.ReadingsAction());
    window.Menu().Add(window.NoticesAction());
    window.Menu().Add({.Name = QStringLiteral("&Ports…"), .Keys = {}, .Runs = [&ports] { ports.OpenDialog(); }});
    QAction& shown = window.Menu().Add(
        {.Name = QStringLiteral("&Hints"), .Keys = {}, .Runs = [&hints] { hints.SetOn(!hints.AreOn()); }});
    shown.setCheckable(true);
    QObject::connect(&window.Menu().List(), &QMenu::aboutToShow, &shown,
                     [&hints, &shown] { shown.setChecked(hints.AreOn()); });
    window.Menu().Add(window.HelpAction());
    window.Menu().Add(
        {.Name = QStringLiteral("Recovery &card"), .Keys = {}, .Runs = [&help] { help.Open(RecoveryCard); }});
    window.Menu().Add(
        {.Name = QStringLiteral("Report a pro&blem…"), .Keys = {}, .Runs = [&help] { help.ReportProblem(); }});
    window.Menu().Add({.Name = QStringLiteral("&About"), .Keys = {}, .Runs = [&help] { help.Open(PageOfProgram); }});
}

} // namespace quorin
