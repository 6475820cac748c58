// SPDX-License-Identifier: MIT
// Text out of the bytes of a serial line, however they are cut into reads.
#pragma once

#include "src/text/text.h"

namespace backends {

/// UTF-8 where the bytes are valid UTF-8, and Windows-1252 byte by byte elsewhere: an instrument may send either. A
/// NUL, as a break on the line reads, is a blank. A character that is not whole at the end of a read waits for the next
/// one.
class SerialText {
public:
    Text Decode(std::string_view bytes);
    std::size_t Pending() const { return Waiting.size(); } ///< bytes that wait for the rest of their character, up to 3
    void Reset() { Waiting.clear(); }                      ///< forgets them: what follows is another line's

private:
    std::string Waiting;
};

} // namespace backends
