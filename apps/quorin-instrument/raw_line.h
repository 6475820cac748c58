// SPDX-License-Identifier: MIT
// What the two kinds of serial line do with a file descriptor.
#pragma once

#include <string_view>

namespace instrument {

/// Sets raw mode, 9600 baud, 8 bits, no parity, 1 stop bit, modem lines ignored. On failure returns false and sets
/// errno.
bool SetRawLine(int descriptor);

/// Writes what the descriptor accepts now or within 50 ms, and discards what the other side has sent. The descriptor
/// must be non-blocking. Returns the number of bytes written, or -1 with errno set.
long WriteSome(int descriptor, std::string_view bytes);

} // namespace instrument
