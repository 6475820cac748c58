// SPDX-License-Identifier: MIT
// Decodes the bytes of a serial line, independently of how they are divided into reads.
#pragma once

#include "src/text/text.h"

namespace backends {

/// Decodes valid UTF-8 as such and every other byte as Windows-1252: an instrument may send either. A NUL, which is how
/// a break on the line is read, becomes a blank. A character that is incomplete at the end of a read is completed by
/// the next one.
class SerialText {
public:
    Text Decode(std::string_view bytes);
    std::size_t Pending() const { return Waiting_.size(); } ///< bytes of an incomplete character, up to 3
    void Reset() { Waiting_.clear(); }                      ///< discards them: the next bytes are from another line

private:
    std::string Waiting_;
};

} // namespace backends
