// SPDX-License-Identifier: MIT
// A file that a person names, read whole.
#pragma once

#include <cstddef>
#include <string>

namespace backends {

struct PlainFile {
    std::string Bytes; ///< without a byte-order mark
    std::string Why;   ///< why it can't be read, empty on success: "No such file or directory", "it is a folder"
    int Error = 0;     ///< the errno value, 0 if the reason is another one
};

enum class Links { Follow, Refuse };

/// Reads a file. What is no plain file, and what is larger than `largest` bytes, is refused; nothing waits for a
/// writer.
PlainFile ReadPlainFile(const std::string& path, std::size_t largest, Links links = Links::Follow);

} // namespace backends
