// SPDX-License-Identifier: MIT
// Where tests put their files. If TMPDIR is set, it decides for all of them.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace support {

/// For tests that are not about a disk: returns a folder in the machine's memory, because a disk makes them wait at
/// each save.
inline std::filesystem::path PlaceInMemory() {
    const char* const memory = "/dev/shm";
    std::error_code none;
    const bool usable = std::filesystem::is_directory(memory, none) && ::access(memory, W_OK) == 0;
    return std::getenv("TMPDIR") == nullptr && usable ? memory : std::filesystem::temp_directory_path();
}

/// For tests that are about a disk: returns the folder for temporary files, which is usually on one.
inline std::filesystem::path PlaceOnDisk() {
    return std::filesystem::temp_directory_path();
}

} // namespace support
