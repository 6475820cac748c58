// SPDX-License-Identifier: MIT
#pragma once

#include "backends/files/host_files.h"

#include <filesystem>
#include <string>

/// Returns the path of an open folder, without links.
inline std::string PathOf(const backends::Descriptor& folder) {
    return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(folder.Number())).string();
}
