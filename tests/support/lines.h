// SPDX-License-Identifier: MIT
// Splits a text into its lines, without their ends.
#pragma once

#include <sstream>
#include <string>
#include <vector>

namespace support {

inline std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

} // namespace support
