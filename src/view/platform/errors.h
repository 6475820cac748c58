// SPDX-License-Identifier: MIT
// How a platform operation says that it failed.
#pragma once

#include "src/text/text.h"

namespace platform {

/// The run-time's error number. The values are those that BASIC run-times have used since the eighties, so that a
/// number in a message box can be looked up.
using ErrorNumber = std::int32_t;

inline constexpr ErrorNumber NoError = 0;
inline constexpr ErrorNumber WentStale = 24; ///< what the device knew it by is no longer known, as on a network
inline constexpr ErrorNumber FileNotFound = 53;
inline constexpr ErrorNumber FileChanged = 55; ///< by another program
inline constexpr ErrorNumber DeviceFailed = 57;
inline constexpr ErrorNumber FileExists = 58;
inline constexpr ErrorNumber TooLong = 59; ///< a file, or a line of it, that no use of the program makes so long
inline constexpr ErrorNumber DiskFull = 61;
inline constexpr ErrorNumber RowNotFound = 63; ///< or the line of a file
inline constexpr ErrorNumber NotAvailable = 68;
inline constexpr ErrorNumber PermissionDenied = 70;
inline constexpr ErrorNumber InUse = 71;    ///< another program has locked it: nothing was done, and can be later
inline constexpr ErrorNumber Damaged = 72;  ///< or of another kind than is read here
inline constexpr ErrorNumber ReadKept = 73; ///< another program's lock has kept a read: what seems missing need not be
inline constexpr ErrorNumber PathRefused = 75;  ///< a name that leads outside the device's storage, or is no name
inline constexpr ErrorNumber PathNotFound = 76; ///< the folder in which a file should be

/// Nothing is there under a name, or it is a name that nothing can have. Anything else has kept what is there from us:
/// who took that for missing would make it anew, over it or in another place.
constexpr bool IsMissing(ErrorNumber error) {
    return error == FileNotFound || error == PathRefused;
}

/// What an error number means, for a message: "the disk is full". An unknown one gives "error" and the number.
Text ErrorText(ErrorNumber error);

} // namespace platform
