// SPDX-License-Identifier: MIT
// Reads a file of the host that a person has named.
#pragma once

#include <cstddef>
#include <string>

namespace quorin {

/// Reads up to `most` bytes, and one more of a longer file. Returns why the file can't be read, in a few words; empty
/// on success.
std::string ReadHostFile(const std::string& path, std::size_t most, std::string& bytes);

/// Returns the last part of a path.
std::string FileName(const std::string& path);

} // namespace quorin
