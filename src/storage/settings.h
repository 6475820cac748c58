// SPDX-License-Identifier: MIT
// The settings of the application and the names of its two permanent files.
#pragma once

#include "src/text/text.h"

namespace modQuorin {

/// Set by SetFilePaths, at start-up and each time the storage volume may have changed.
struct FilePaths {
    Text DriversFile; ///< full name of the drivers table
    Text ControlFile; ///< full name of the register of all downloads
};
inline FilePaths Paths;

void SetFilePaths();

/// Returns a setting of the application, from the section "Settings"; `byDefault` if it was never stored.
Text GetSetting(const Text& key, const Text& byDefault);
void SaveSetting(const Text& key, const Text& value); ///< a failure to store it is not reported

/// The type and creator of all data files.
inline const Text DataType = u"TEXT";
inline const Text DataCreator = u"QVRN";

} // namespace modQuorin
