// SPDX-License-Identifier: MIT
// Which lines of a driver package count. The first one that does is the driver's row, the others are its inf table.
#pragma once

#include "src/text/text.h"

#include <optional>

namespace modQuorin {

/// True for the name of a file that is offered as a package.
bool IsPackageName(TextView name);

struct PackageLines {
    std::int32_t CountedLines = 0; ///< so far; who takes a line adds it
    std::int32_t EmptyLines = 0;   ///< empty lines since the last counted line; they count once another line follows
};

/// True if the next line of a package counts. The EmptyLines before it count too then, and come first: who takes one
/// subtracts it. Comments do not count, nor do empty lines before the driver's row or at the end: an editor leaves one
/// at the end.
bool LineCounts(PackageLines& lines, TextView line);

struct DriverRow {
    Text Name;
    Text InfFile;
};

/// Splits the first counted line at its first bar. Returns no value if it has none: no driver is added then, and the
/// inf file has no name.
std::optional<DriverRow> DriverRowOf(TextView line);

} // namespace modQuorin
