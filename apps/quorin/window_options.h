// SPDX-License-Identifier: MIT
// The command line of the window program.
#pragma once

#include "apps/options/command_line.h"
#include "backends/loop/back_end.h"

#include <string>

namespace quorin {

struct Options {
    backends::DeviceOptions Device; ///< root and settings are empty where nothing was said of them
    bool ListPorts = false;         ///< the ports are to be listed, and no more
    bool Demo = false;
    double Scale = 1; ///< how many screen pixels a pixel of the device takes, across as well as down
};

using apps::Reading;

/// `keyHelp` is what --help says of the keys: whole lines.
Reading ReadOptions(int count, const char* const* words, const std::string& keyHelp, Options& options);

} // namespace quorin
