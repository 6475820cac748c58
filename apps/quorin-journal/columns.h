// SPDX-License-Identifier: MIT
// Texts for people, in columns.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace reader {

/// Adds blanks up to so many characters, which are code points of UTF-8.
std::string Padded(std::string text, std::size_t width);

/// Returns rows in columns that are as wide as their widest text, two blanks apart. Columns of numbers are on the right
/// side of theirs.
std::string Table(const std::vector<std::vector<std::string>>& rows, const std::vector<bool>& areNumbers);

/// Returns "812 B", "12.4 kB", "1.2 MB".
std::string SizeText(std::int64_t bytes);

} // namespace reader
