// SPDX-License-Identifier: MIT
// Lines of a text file, told apart without any of the product's routines.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace fuzz {

/// Each line without its end, a line feed with or without one carriage return before it, as it is once the file has
/// been written anew: with blanks for NULs. A last line may lack its end.
inline std::vector<std::string> LinesOf(const std::string& bytes) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < bytes.size();) {
        const std::size_t end = bytes.find('\n', start);
        std::string line = bytes.substr(start, end - start);
        if (end != std::string::npos && !line.empty() && line.back() == '\r')
            line.pop_back();
        std::replace(line.begin(), line.end(), '\0', ' ');
        lines.push_back(line);
        start = end == std::string::npos ? bytes.size() : end + 1;
    }
    return lines;
}

} // namespace fuzz
