// SPDX-License-Identifier: MIT
// The application's name.
#pragma once

#include "src/text/text.h"

namespace modQuorin {

/// The name of the data folder and of the settings, and the title of every message box. SetFilePaths sets it.
inline Text ApplicationName;

} // namespace modQuorin
