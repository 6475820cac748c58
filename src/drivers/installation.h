// SPDX-License-Identifier: MIT
// Driver packages: plain text files with the ending ".qvd", which hold a driver's row and its inf table.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace modQuorin {

/// Fills DriverNames with the packages in the data folder and on the volumes.
void EnumAddDrivers();

/// Returns the name under which a package of this file name is found in a data folder: characters that no file of the
/// device can have are replaced, and in a memory, which has no file names with an ending, full stops are left out.
Text PackageName(const Text& fileName, const Text& dataFolder);

/// If ScrAddDriver shows other packages than there are now, fills it again. The selected package stays selected if it
/// is still there. Returns true if it was filled. REQUIRES: ScrAddDriver is the current screen.
bool FollowDriverPackages();

/// Fills ScrAddDriver and selects the first package.
void ShowDriverPackages(const Text& title);

/// Installs the selected package: adds the driver's row and writes its inf file. Shows the result in a message box.
void InstallDriver();

/// Installs a package given as lines, without a message. The inf file is written first, so that no driver is listed
/// without its table. Returns true if it is installed.
bool InstallLines(const std::vector<Text>& package);

/// Updates the line of "QVRN.info" that names the data folder. If the file does not exist, it is not created.
void WriteInfoFile();

} // namespace modQuorin
