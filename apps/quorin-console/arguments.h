// SPDX-License-Identifier: MIT
// The arguments of a command line.
#pragma once

#include "src/text/text.h"

#include <optional>
#include <string>
#include <vector>

namespace console {

/// The arguments that blanks part.
std::vector<std::string> WordsOf(const std::string& rest);

std::optional<std::int64_t> NumberFrom(const std::string& word);

/// A TEXT: the rest of the line as it stands or, where it begins with a double quote, a JSON string. Nothing for one
/// that is no proper JSON string.
std::optional<Text> TextFrom(const std::string& rest);

} // namespace console
