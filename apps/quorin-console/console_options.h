// SPDX-License-Identifier: MIT
// The command line of quorin-console.
#pragma once

#include "apps/options/command_line.h"
#include "backends/host/host_device.h"

#include <string>

namespace console {

struct Options {
    backends::DeviceOptions Device;
    std::string Script; ///< file with the commands; standard input when empty
    bool Strict = false;
    bool PlainText = false; ///< the output is for people
    bool Verdicts = false;  ///< an event for each reading, and for each record that is saved
};

using apps::Reading;

Reading ReadOptions(int count, const char* const* words, Options& options);

} // namespace console
