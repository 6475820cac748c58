// SPDX-License-Identifier: MIT
// The contents of the files that an operation works on, in one form for both ways of keeping lines.
#pragma once

#include "tests/system/power_loss/tree.h"

#include <optional>
#include <vector>

namespace disk {

enum class Keeping { TextFiles, LineDatabases };

/// File names, such as "list.txt", and the contents: lines, each with a line feed; nothing for a missing file. A line
/// database without a line is an empty file.
using State = std::map<std::string, std::optional<std::string>>;

/// Returns the path of a file under the root.
std::string HostName(const std::string& name, Keeping keeping);

/// Reads without the program's own routines. For a database, SQLite rolls back an interrupted change and checks every
/// page; the contents of a damaged one have a line that says so, which no operation writes.
std::optional<std::string> Content(const std::string& root, const std::string& name, Keeping keeping);
State Look(const std::string& root, const State& names, Keeping keeping);

std::vector<std::string> LinesOf(const std::string& content);
std::string Joined(const std::vector<std::string>& lines);

} // namespace disk
