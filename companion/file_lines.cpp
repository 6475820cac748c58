// SPDX-License-Identifier: MIT
#include "companion/file_lines.h"

#include <algorithm>

namespace companion {

std::vector<Text> LinesOf(TextView file) {
    constexpr char16_t ByteOrderMark = 0xFEFF;
    if (!file.empty() && file.front() == ByteOrderMark)
        file.remove_prefix(1);
    std::vector<Text> lines;
    for (std::size_t at = 0; at < file.size();) {
        const std::size_t end = std::min(file.find(u'\n', at), file.size());
        lines.emplace_back(file.substr(at, end - at));
        if (!lines.back().empty() && lines.back().back() == u'\r')
            lines.back().pop_back();
        at = end + 1;
    }
    return lines;
}

} // namespace companion
