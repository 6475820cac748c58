// SPDX-License-Identifier: MIT
#pragma once

#include "backends/files/host_files.h"

#include <string>
#include <vector>

namespace backends {

/// Returns the names in a folder in byte order, without `.` and `..`; none if the folder can't be read.
std::vector<std::string> NamesIn(const std::string& folder);
/// The same for an open folder. On failure `names` has those that were read before it.
ErrorNumber ReadNames(const Descriptor& folder, std::vector<std::string>& names);

/// Returns the last part of a path.
std::string NameOf(const std::string& path);

/// Returns the rest of a name after its stem if that is a whole number without leading zeros ("7" of "ttyUSB7", but not
/// "07"); empty for any other name.
std::string NumberAfter(const std::string& stem, const std::string& name);

/// Returns the first line of a file, without its line end and with `?` for each control character; empty if it can't be
/// read.
std::string FirstLine(const std::string& path);

} // namespace backends
