// SPDX-License-Identifier: MIT
// Prepares the process: the three standard streams, and how it ends when a stream or memory is lost.
#pragma once

#include "apps/start/exit_status.h"

namespace start {

/// Must be called before anything is opened.
///  - A standard stream that is closed is opened so that reads return the end of the file and writes fail. Otherwise
///  the
///    next file that is opened would get its number, and messages would be written into it.
///  - std::cout waits for a reader that is not ready, whatever the mode of its descriptor.
///  - A write to a reader that is gone, or beyond the size limit of a file, fails and raises no signal.
///  - If memory can't be allocated, or something happens that the program can't continue from, the program ends with a
///    message and ExitStatus::Failure. `program` is its name in that message.
///  - The owner can open what the program creates, whatever the umask. The umask decides what others may do.
void PrepareProcess(const char* program);

/// Must be called last, with the exit status so far. Returns it, or ExitStatus::NoOutput, after a message on standard
/// error, if anything written to std::cout could not be written.
ExitStatus StatusAfterOutput(const char* program, ExitStatus status);

} // namespace start
