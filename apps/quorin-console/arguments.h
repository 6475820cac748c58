// SPDX-License-Identifier: MIT
// The arguments of a command line.
#pragma once

#include "src/text/text.h"

#include <optional>
#include <string>
#include <vector>

namespace console {

/// Returns the arguments, separated by blanks.
std::vector<std::string> WordsOf(const std::string& rest);

std::optional<std::int64_t> NumberFrom(const std::string& word);

/// Reads a TEXT: the rest of the line as it is or, if it begins with a double quote, a JSON string. Returns nothing for
/// an invalid JSON string.
std::optional<Text> TextFrom(const std::string& rest);

} // namespace console
