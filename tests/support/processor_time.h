// SPDX-License-Identifier: MIT
#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>

namespace support {

/// Returns the processor time that a process has used, in seconds.
inline double ProcessorSeconds(int process) {
    std::ifstream in("/proc/" + std::to_string(process) + "/stat");
    std::string text;
    std::getline(in, text);
    std::istringstream rest(text.substr(text.rfind(')') + 1)); // the name may contain blanks
    std::string skipped;
    for (int field = 3; field < 14; ++field)
        rest >> skipped;
    double user = 0;
    double system = 0;
    rest >> user >> system;
    return (user + system) / static_cast<double>(::sysconf(_SC_CLK_TCK));
}

} // namespace support
