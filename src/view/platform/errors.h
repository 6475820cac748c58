// SPDX-License-Identifier: MIT
// The error numbers that platform operations return.
#pragma once

#include "src/text/text.h"

namespace platform {

/// An error number. The values are those that BASIC run-times have used since the eighties, so that a number in a
/// message box can be looked up. A platform may return others.
enum class ErrorNumber : std::int32_t {
    NoError = 0,
    WentStale = 24, ///< the device's handle for it is no longer valid, as on a network
    FileNotFound = 53,
    FileChanged = 55, ///< by another program
    DeviceFailed = 57,
    FileExists = 58,
    TooLong = 59, ///< a file or a line longer than any that the program writes in use
    DiskFull = 61,
    RowNotFound = 63, ///< also for a line of a file
    NotAvailable = 68,
    PermissionDenied = 70,
    InUse = 71,        ///< another program has locked it: nothing was done, and it can be tried again
    Damaged = 72,      ///< or a file of another kind than is read here
    ReadKept = 73,     ///< another program's lock made a read fail: what seems missing may exist
    PathRefused = 75,  ///< a name that leads outside the device's storage, or an invalid name
    PathNotFound = 76, ///< the folder of the file is missing
};
using enum ErrorNumber;

/// Returns the number of an error, for a message.
constexpr std::int32_t NumberOf(ErrorNumber error) {
    return static_cast<std::int32_t>(error);
}

/// True if no file exists under a name, or none can have that name. After any other error the file may exist and could
/// not be read: a caller that treated it as missing would create it again, over it or in another place.
constexpr bool IsMissing(ErrorNumber error) {
    return error == FileNotFound || error == PathRefused;
}

/// Returns the meaning of an error number for a message, such as "the disk is full". For an unknown number it is
/// "error" and the number.
Text ErrorText(ErrorNumber error);

} // namespace platform
