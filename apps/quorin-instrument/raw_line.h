// SPDX-License-Identifier: MIT
// What the two kinds of serial line do with a file descriptor.
#pragma once

#include <string_view>

namespace instrument {

/// Raw, 9600 baud, 8 bits, no parity, 1 stop bit, no modem lines heeded. False with errno set.
bool SetRawLine(int descriptor);

/// Writes what the descriptor, which must not block, takes now or within 50 ms, and throws away what the other side has
/// sent. Gives the number of bytes written, or -1 with errno set.
long WriteSome(int descriptor, std::string_view bytes);

} // namespace instrument
