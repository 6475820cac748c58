// SPDX-License-Identifier: MIT
// Where tests put their files. TMPDIR decides for all of them where it is set.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace support {

/// For tests that are not about a disk: the machine's memory, since they would wait for a disk at each save.
inline std::filesystem::path PlaceInMemory() {
    const char* const memory = "/dev/shm";
    std::error_code none;
    const bool usable = std::filesystem::is_directory(memory, none) && ::access(memory, W_OK) == 0;
    return std::getenv("TMPDIR") == nullptr && usable ? memory : std::filesystem::temp_directory_path();
}

/// For tests that are about a disk, as far as the folder for temporary files is on one.
inline std::filesystem::path PlaceOnDisk() {
    return std::filesystem::temp_directory_path();
}

} // namespace support
