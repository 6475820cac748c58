// SPDX-License-Identifier: MIT
// A file that a person names, read whole.
#pragma once

#include <cstddef>
#include <string>

namespace backends {

struct PlainFile {
    std::string Bytes;
    std::string Why; ///< why it can't be read, empty on success: "No such file or directory", "it is a folder"
    int Error = 0;   ///< the errno value, 0 if the reason is another one
};

enum class Links { Follow, Refuse };
enum class Mark { Drop, Keep }; ///< a byte-order mark at the beginning

/// Reads a file. What is no plain file, and what is larger than `largest` bytes, is refused; nothing waits for a
/// writer.
PlainFile ReadPlainFile(const std::string& path, std::size_t largest, Links links = Links::Follow,
                        Mark mark = Mark::Drop);

} // namespace backends
