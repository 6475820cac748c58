// SPDX-License-Identifier: MIT
// The entries of the window's menu.
#pragma once

#include "apps/quorin/window_hints.h"
#include "apps/quorin/window_ports.h"
#include "backends/qt/qt_platform.h"

namespace quorin {

/// Fills the menu of the window, once.
void FillWindowMenu(backends::qt::QtPlatform& device, WindowPorts& ports, WindowHints& hints);

} // namespace quorin
