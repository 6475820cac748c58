// SPDX-License-Identifier: MIT
// The command line of the window program.
#pragma once

#include "apps/options/command_line.h"
#include "backends/host/host_device.h"

#include <string>

namespace quorin {

struct Options {
    backends::DeviceOptions Device; ///< root and settings are empty if they were not given
    bool ListPorts = false;         ///< list the ports, and do nothing else
    bool Demo = false;
    double Scale = 1; ///< screen pixels for each pixel of the device, in both directions
};

using apps::Reading;

/// `keyHelp` is the text of --help about the keys: whole lines.
Reading ReadOptions(int count, const char* const* words, const std::string& keyHelp, Options& options);

} // namespace quorin
