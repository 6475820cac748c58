// SPDX-License-Identifier: MIT
// The application's name, and the section of its settings.
#pragma once

#include "src/text/text.h"

namespace modQuorin {

/// The name of the data folder and of the settings, and the title of every message box. SetFilePaths sets it.
inline Text ApplicationName;

/// The section that every setting is stored in.
inline const Text SettingsSection = u"Settings";
inline constexpr const char16_t* VolumeKey = u"StorageVolume"; ///< the root of the volume that holds the data folder

} // namespace modQuorin
