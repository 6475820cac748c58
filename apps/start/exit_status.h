// SPDX-License-Identifier: MIT
// Exit statuses of all programs.
#pragma once

namespace start {

inline constexpr int StatusEnded = 0;
inline constexpr int StatusFailure = 1;    ///< stopped while it ran: a failure, no memory, a record that is not saved
inline constexpr int StatusNotStarted = 2; ///< an option, the root folder or the input forbids to start
inline constexpr int StatusStrict = 3;     ///< a command has failed, and was to be the last one then
inline constexpr int StatusNoOutput = 4;   ///< standard output could not be written

} // namespace start
