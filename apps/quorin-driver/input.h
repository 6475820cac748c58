// SPDX-License-Identifier: MIT
// The files that the commands read. Each routine tells on standard error why it can't.
#pragma once

#include "companion/recorded_results.h"

#include <optional>
#include <string>
#include <vector>

namespace driver {

/// Returns the lines of a driver package or of the list of drivers. None if the file can't be read, has more than 1 MB,
/// or is no text.
std::optional<std::vector<Text>> ReadLines(const std::string& path);

/// Returns the results of a recording, of the bytes or with times. None if it can't be read, or has more than 100 MB.
std::optional<std::vector<companion::RecordedResult>> ReadResults(const std::string& path);

/// Writes a message to standard error.
void Tell(const std::string& message);

} // namespace driver
