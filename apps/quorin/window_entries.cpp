// SPDX-License-Identifier: MIT
#include "apps/quorin/window_entries.h"

namespace quorin {

// A line an entry, from the top of the menu to its foot.

void FillWindowMenu(backends::qt::QtPlatform& device, WindowPorts& ports, WindowHints& hints) {
    backends::qt::Window& window = device.window;
    window.Menu().Add(window.ReadingsAction());
    window.Menu().Add(window.NoticesAction());
    window.Menu().Add({.Name = QStringLiteral("&Ports…"), .Keys = {}, .Runs = [&ports] { ports.OpenDialog(); }});
    QAction& shown = window.Menu().Add(
        {.Name = QStringLiteral("&Hints"), .Keys = {}, .Runs = [&hints] { hints.SetOn(!hints.AreOn()); }});
    shown.setCheckable(true);
    QObject::connect(&window.Menu().List(), &QMenu::aboutToShow, &shown,
                     [&hints, &shown] { shown.setChecked(hints.AreOn()); });
}

} // namespace quorin
