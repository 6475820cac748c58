// SPDX-License-Identifier: MIT
// A file that is here compared with another state of it, line by line.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace handover {

/// A record that is not the same on both sides. The one here stays.
struct Difference {
    std::string File;
    std::size_t Record = 0;          ///< from 1; 0 for the header, and for a file that is compared as a whole
    std::optional<std::string> Here; ///< the line, nothing if there is none
    std::string InZip;               ///< the line
};

struct Merged {
    std::vector<Difference> Differences = {};
    std::string Bytes = {}; ///< what is here with what is new behind it; empty if nothing is new
    std::size_t New = 0;    ///< lines that are new
};

enum class Growth { Allowed, Refused };

/// Compares two states of a file by the numbers of their lines. What the other one has behind the last line here is new
/// if that line is the same in both: else lines were deleted or added on both sides, and which ones are new can't be
/// told from their numbers. An empty file may always grow.
Merged Merge(const std::string& file, std::string_view here, std::string_view inZip, Growth growth);

/// True if all lines of a file are the first lines of the other one.
bool Continues(std::string_view here, std::string_view inZip);

} // namespace handover
