// SPDX-License-Identifier: MIT
// The application as the platform and a person know it.
#pragma once

#include "src/text/text.h"

namespace modQuorin {

/// Names the data folder and the settings, and is the title of every message box. SetFilePaths sets it.
inline Text ApplicationName;

} // namespace modQuorin
