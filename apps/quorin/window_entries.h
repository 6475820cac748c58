// SPDX-License-Identifier: MIT
// The entries of the window's menu.
#pragma once

#include "apps/quorin/arriving.h"
#include "apps/quorin/window_export.h"
#include "apps/quorin/window_hand_over.h"
#include "apps/quorin/window_help.h"
#include "apps/quorin/window_hints.h"
#include "apps/quorin/window_ports.h"
#include "apps/quorin/window_zoom.h"

namespace quorin {

/// Fills the menu of the window, once.
void FillWindowMenu(backends::qt::QtPlatform& device, DataFolder& data, Arriving& arriving, WindowPorts& ports,
                    WindowHints& hints, WindowExport& exports, WindowHandOver& handOver, WindowHelp& help,
                    WindowZoom& zoom);

/// Adds the entries that change the scale.
void AddZoomEntries(backends::qt::WindowMenu& menu, WindowZoom& zoom);

} // namespace quorin
