// SPDX-License-Identifier: MIT
#include "apps/quorin-export/scratch_folder.h"

#include "backends/files/host_files.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace exporter {

namespace {

std::string FolderFor(const std::string& output) {
    if (!output.empty())
        return backends::FolderOf(output);
    const char* const temporary = std::getenv("TMPDIR");
    return temporary != nullptr && *temporary != '\0' ? temporary : "/var/tmp";
}

} // namespace

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    if (!Path_.empty())
        std::filesystem::remove_all(Path_, ignored);
}

std::string ScratchFolder::Make(const std::string& output) {
    std::string path = FolderFor(output) + "/" + std::string(backends::ReplacementStem) + "XXXXXX";
    if (::mkdtemp(path.data()) == nullptr)
        return "no folder can be made in " + FolderFor(output) + ": " + backends::ReasonOf(errno);
    Path_ = path;
    return {};
}

} // namespace exporter
