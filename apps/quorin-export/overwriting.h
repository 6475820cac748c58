// SPDX-License-Identifier: MIT
#pragma once

#include "apps/quorin-export/export_options.h"

#include <string>

namespace exporter {

/// Returns why a file must not be written: it is a table that is read, or lies in the root folder, or there is no such
/// folder. A slip in the command line must not cost data. Empty if it may be; an empty path is standard output.
/// `table`: the path of a table that is read besides those that the options name as files; may be empty.
std::string WhyNotOver(const std::string& path, const std::string& table, const Options& options);

} // namespace exporter
