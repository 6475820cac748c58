// SPDX-License-Identifier: MIT
// --hand-over: copies what is new on the device to a folder.
#pragma once

#include "apps/quorin-console/console_options.h"
#include "apps/start/exit_status.h"
#include "backends/loop/back_end.h"
#include "handover/content.h"

#include <iosfwd>
#include <vector>

namespace console {

/// Returns the files of a device: those of its data folder, its line databases, and the days of its journal in a folder
/// (empty for none). The form must not have been started.
std::vector<handover::Source> SourcesOf(const std::string& root, const std::string& journal);

/// Hands over, and writes an object for each file. Reads the device only: another program may work on it.
start::ExitStatus HandOver(const Options& options, backends::BackEnd& device, std::ostream& out);

} // namespace console
