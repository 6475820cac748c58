// SPDX-License-Identifier: MIT
// The settings of the application and the names of its standing files.
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

/// A setting of the application, in the section "Settings"; `byDefault` where it was never stored.
Text GetSetting(const Text& key, const Text& byDefault);
void SaveSetting(const Text& key, const Text& value); ///< a store that can't be written is not reported

/// The type and creator of all data files.
inline const Text DataType = u"TEXT";
inline const Text DataCreator = u"QVRN";

} // namespace modQuorin
