// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace support {

/// Checks what the help of every program has: a line for each option, with its default, and all exit statuses.
inline void ExpectPlainHelp(const std::string& help) {
    std::istringstream in(help);
    for (std::string line; std::getline(in, line);) {
        EXPECT_NE(line.rfind(std::string(25, ' '), 0), 0U) << "a second line of an option: " << line;
        const bool actsAlone = line.find(" and end") != std::string::npos; // --help, --version, --ports
        if (line.rfind("  -", 0) != 0 || actsAlone)
            continue;
        EXPECT_LE(line.size(), 120U) << line;
        EXPECT_EQ(line.back(), ']') << line;
    }
    EXPECT_THAT(help, testing::HasSubstr("\nExit status of all programs:\n  0  done\n  1  "));
    EXPECT_THAT(help, testing::ContainsRegex("\n  2  [^\n]+\n  3  [^\n]+\n  4  [^\n]+"));
}

} // namespace support
