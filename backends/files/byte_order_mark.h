// SPDX-License-Identifier: MIT
// The byte-order mark that some editors write at the start of a UTF-8 file.
#pragma once

#include <string_view>

namespace backends {

/// Returns the bytes of a file, or of its first line, without the mark, which is not part of the text.
inline std::string_view BehindMark(std::string_view bytes) {
    constexpr std::string_view Mark = "\xEF\xBB\xBF";
    if (bytes.substr(0, Mark.size()) == Mark)
        bytes.remove_prefix(Mark.size());
    return bytes;
}

} // namespace backends
