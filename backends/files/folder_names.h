// SPDX-License-Identifier: MIT
#pragma once

#include "backends/files/host_files.h"

#include <string>
#include <vector>

namespace backends {

/// The names in a folder in the order of their bytes, without `.` and `..`. None of a folder that can't be read.
std::vector<std::string> NamesIn(const std::string& folder);
/// The same of an open folder. On failure `names` holds those that were read before it.
ErrorNumber ReadNames(const Descriptor& folder, std::vector<std::string>& names);

/// The last part of a path.
std::string NameOf(const std::string& path);

/// What is left of a name after its stem, when that is a whole number as the system writes it ("7" of "ttyUSB7", not
/// "07"); empty for any other name.
std::string NumberAfter(const std::string& stem, const std::string& name);

/// The first line of a file, without its end and with `?` for each control character; empty when it can't be read.
std::string FirstLine(const std::string& path);

} // namespace backends
