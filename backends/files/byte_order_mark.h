// SPDX-License-Identifier: MIT
// The mark that some editors put at the head of a UTF-8 file.
#pragma once

#include <string_view>

namespace backends {

/// The bytes of a file, or of its first line, without the mark, which is none of the text.
inline std::string_view BehindMark(std::string_view bytes) {
    constexpr std::string_view Mark = "\xEF\xBB\xBF";
    if (bytes.substr(0, Mark.size()) == Mark)
        bytes.remove_prefix(Mark.size());
    return bytes;
}

} // namespace backends
