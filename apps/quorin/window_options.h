// SPDX-License-Identifier: MIT
// The command line of the window program.
#pragma once

#include "apps/options/command_line.h"
#include "backends/host/host_device.h"
#include "backends/host/journal.h"

#include <optional>
#include <string>
#include <vector>

namespace quorin {

struct Options {
    backends::DeviceOptions Device; ///< root and settings are empty if they were not given
    bool ListPorts = false;         ///< list the ports, and do nothing else
    bool Demo = false;
    std::vector<std::string> Files;               ///< packages to install, and a download to open, as they were named
    std::optional<backends::JournalPlan> Journal; ///< without its root folder; none if no journal is kept
    std::string WhyNoJournal;                     ///< why there is no place for one; empty if it was not asked for
    backends::ProgramName Program;
    double UsualScale = 1;       ///< screen pixels for each pixel of the device, in both directions
    std::optional<double> Scale; ///< the same, as it was asked for; none if it was not
};

using apps::Reading;

/// `keyHelp` is the text of --help about the keys: whole lines.
Reading ReadOptions(int count, const char* const* words, const std::string& keyHelp, Options& options);

/// Returns a path from the root of the file system on, without links; the same path if that can't be found out.
std::string FullPath(const std::string& path);

} // namespace quorin
