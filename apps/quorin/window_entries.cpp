// SPDX-License-Identifier: MIT
#include "apps/quorin/window_entries.h"

namespace quorin {

// A line an entry, from the top of the menu to its foot.

void FillWindowMenu(backends::qt::QtPlatform& device) {
    backends::qt::Window& window = device.window;
    window.Menu().Add(window.ReadingsAction());
    window.Menu().Add(window.NoticesAction());
}

} // namespace quorin
