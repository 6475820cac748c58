// SPDX-License-Identifier: MIT
// The error numbers that platform operations return.
#pragma once

#include "src/text/text.h"

namespace platform {

/// An error number. The values are those that BASIC run-times have used since the eighties, so that a number in a
/// message box can be looked up.
using ErrorNumber = std::int32_t;

inline constexpr ErrorNumber NoError = 0;
inline constexpr ErrorNumber WentStale = 24; ///< the device's handle for it is no longer valid, as on a network
inline constexpr ErrorNumber FileNotFound = 53;
inline constexpr ErrorNumber FileChanged = 55; ///< by another program
inline constexpr ErrorNumber DeviceFailed = 57;
inline constexpr ErrorNumber FileExists = 58;
inline constexpr ErrorNumber TooLong = 59; ///< a file or a line longer than any that the program writes in use
inline constexpr ErrorNumber DiskFull = 61;
inline constexpr ErrorNumber RowNotFound = 63; ///< also for a line of a file
inline constexpr ErrorNumber NotAvailable = 68;
inline constexpr ErrorNumber PermissionDenied = 70;
inline constexpr ErrorNumber InUse = 71; ///< another program has locked it: nothing was done, and it can be tried again
inline constexpr ErrorNumber Damaged = 72;  ///< or a file of another kind than is read here
inline constexpr ErrorNumber ReadKept = 73; ///< another program's lock made a read fail: what seems missing may exist
inline constexpr ErrorNumber PathRefused = 75;  ///< a name that leads outside the device's storage, or an invalid name
inline constexpr ErrorNumber PathNotFound = 76; ///< the folder of the file is missing

/// True if no file exists under a name, or none can have that name. After any other error the file may exist and could
/// not be read: a caller that treated it as missing would create it again, over it or in another place.
constexpr bool IsMissing(ErrorNumber error) {
    return error == FileNotFound || error == PathRefused;
}

/// Returns the meaning of an error number for a message, such as "the disk is full". For an unknown number it is
/// "error" and the number.
Text ErrorText(ErrorNumber error);

} // namespace platform
