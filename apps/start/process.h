// SPDX-License-Identifier: MIT
// What a program owes to whoever has started it: the three standard streams, and how it ends when one is lost.
#pragma once

namespace start {

/// To be called before anything is opened.
///  - A standard stream that is closed becomes one that can be read to its end at once and can't be written: the next
///    file that is opened would have its number otherwise, and messages would be written into that file.
///  - std::cout waits for a reader that takes no more just now, whatever the mode of its descriptor.
///  - A reader that is gone, and a file that has reached the limit for its size, are failed writes and no signals.
///  - Memory that can't be had ends the program with a message and StatusFailure, wherever that is, and so does
///    whatever else nothing can go on from. `program` is its name in that message.
///  - What the program makes can be opened by its owner, whatever the umask. Of what others may do the umask decides.
void PrepareProcess(const char* program);

/// To be called last, with the exit status that all else would give: StatusNoOutput, after a message on standard error,
/// where anything on std::cout could not be written.
int StatusAfterOutput(const char* program, int status);

} // namespace start
