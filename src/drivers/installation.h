// SPDX-License-Identifier: MIT
// Driver packages: plain text files with the ending ".qvd", which bring a driver's row and its inf table.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace modQuorin {

/// Fills DriverNames with the packages in the data folder and on the volumes.
void EnumAddDrivers();

/// Fills ScrAddDriver and takes the first package in hand.
void ShowDriverPackages(const Text& title);

/// Installs the package in hand: adds the driver's row and writes its inf file. What came of it is told.
void InstallDriver();

/// Installs a package that is no file, and shows no message: the inf file first, so that no driver is listed without
/// its table. Returns true if it is installed.
bool InstallLines(const std::vector<Text>& package);

/// Brings the line of "QVRN.info" up to date that says where the data folder is. The file is never made here.
void WriteInfoFile();

} // namespace modQuorin
