// SPDX-License-Identifier: MIT
// Exit statuses of all programs.
#pragma once

namespace start {

inline constexpr int StatusEnded = 0;
inline constexpr int StatusFailure = 1;    ///< stopped while running: a failure, no memory, or an unsaved record
inline constexpr int StatusNotStarted = 2; ///< did not start, because of an option, the root folder or the input
inline constexpr int StatusStrict = 3;     ///< a command failed, and the first failure was to end the program
inline constexpr int StatusNoOutput = 4;   ///< standard output could not be written

} // namespace start
