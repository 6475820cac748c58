// SPDX-License-Identifier: MIT
// Splits a text file into lines without any of the product's routines.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace fuzz {

/// Returns the lines without their ends: a line feed, with or without one carriage return before it. The last line may
/// lack its end.
inline std::vector<std::string> LinesOf(const std::string& bytes) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < bytes.size();) {
        const std::size_t end = bytes.find('\n', start);
        std::string line = bytes.substr(start, end - start);
        if (end != std::string::npos && !line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
        start = end == std::string::npos ? bytes.size() : end + 1;
    }
    return lines;
}

/// The same for a table that the program has rewritten: with blanks for NULs.
inline std::vector<std::string> RewrittenLinesOf(std::string bytes) {
    std::replace(bytes.begin(), bytes.end(), '\0', ' ');
    return LinesOf(bytes);
}

} // namespace fuzz
