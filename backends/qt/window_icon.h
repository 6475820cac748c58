// SPDX-License-Identifier: MIT
// The icon of the program's windows.
#pragma once

#include <QIcon>

namespace backends::qt {

/// Returns the icon of the desktop's theme; that which is built in if the program was not installed.
QIcon WindowIcon();

} // namespace backends::qt
