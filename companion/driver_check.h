// SPDX-License-Identifier: MIT
// Says what is wrong in a driver package before it is installed: what the form would refuse, what would end the program
// or cost readings, and rows that can't be filled. docs/limits.md has the reasons. What a package is, what its texts
// mean and which row a result goes to are asked of the core.
#pragma once

#include "companion/driver_package.h"
#include "companion/finding.h"

namespace companion {

/// A package with more rows is not looked into, and no recording is compared with it: the form itself ends at a result
/// for a row above 32767.
inline constexpr std::size_t MostCheckedRows = 1000;

/// Checks the lines of a package, by their places. `installed`: the rows of drivers.txt, empty if they are not known.
std::vector<Finding> CheckPackage(const std::vector<Text>& lines, const std::vector<modQuorin::DriverRow>& installed);

/// Returns the rows of drivers.txt, given as its lines.
std::vector<modQuorin::DriverRow> InstalledDrivers(const std::vector<Text>& lines);

/// Returns those of the device's drivers.txt; none if it can't be read. Opens no table of the form.
std::vector<modQuorin::DriverRow> DriversOfDevice();

} // namespace companion
