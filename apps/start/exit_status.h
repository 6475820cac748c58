// SPDX-License-Identifier: MIT
// Exit statuses of all programs.
#pragma once

namespace start {

enum class ExitStatus : int {
    Ended = 0,
    Failure = 1,    ///< stopped while running: a failure, no memory, or an unsaved record
    NotStarted = 2, ///< did not start, because of an option, the root folder or the input
    Strict = 3,     ///< a command failed, and the first failure was to end the program
    NoOutput = 4,   ///< standard output could not be written
    Odd = 5,        ///< done, and some of the input was odd, as the output says line by line
    CantStore = 6,  ///< a station has stopped, because what it collects can't be stored
};

constexpr int NumberOf(ExitStatus status) {
    return static_cast<int>(status);
}

} // namespace start
