// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/journal_files.h"

#include "backends/files/host_files.h"
#include "src/text/text.h"
#include "src/view/platform/errors.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <tuple>

namespace reader {

namespace {

using platform::NoError;

std::string WordsOf(platform::ErrorNumber error) {
    return modStringTools::ToBytes(platform::ErrorText(error));
}

/// The program that writes the journal takes the path without links; of a folder that is gone, what is left of it is
/// treated so.
std::string KeyOf(const std::string& root) {
    std::error_code failed;
    const std::string path = std::filesystem::weakly_canonical(std::filesystem::absolute(root), failed).string();
    return journal::RootKey(path.size() > 1 && path.back() == '/' ? path.substr(0, path.size() - 1) : path);
}

} // namespace

std::string FindFiles(const std::string& folder, const std::string& root, std::vector<JournalFile>& files) {
    const std::unique_ptr<DIR, int (*)(DIR*)> opened(::opendir(folder.c_str()), ::closedir);
    if (!opened)
        return backends::ReasonOf(errno);
    const std::string key = root.empty() ? std::string() : KeyOf(root);
    while (const dirent* const entry = ::readdir(opened.get())) {
        const auto name = journal::FileNameFrom(entry->d_name);
        if (name && (key.empty() || name->Root == key))
            files.push_back({*name, folder + "/" + entry->d_name});
    }
    std::sort(files.begin(), files.end(), [](const JournalFile& one, const JournalFile& other) {
        return std::tie(one.Name.Day, one.Name.Root) < std::tie(other.Name.Day, other.Name.Root);
    });
    return {};
}

std::string OpenJournal::Open(const std::string& path) {
    backends::FileEntry entry;
    auto error = backends::EntryAt(path, entry);
    if (error == NoError)
        error = backends::OpenRegular(entry, O_RDONLY | O_CLOEXEC, File_);
    return error == NoError ? std::string() : WordsOf(error);
}

std::optional<std::string_view> OpenJournal::Next() {
    for (;;) {
        if (const auto line = Cutter_.Next())
            return line;
        std::array<char, 65536> part;
        const std::int64_t count = backends::ReadAt(File_.Number(), part.data(), part.size(), Offset_);
        if (count < 0)
            Error_ = backends::ReasonOf(errno);
        if (count <= 0)
            return std::nullopt;
        Offset_ += count;
        Cutter_.Add({part.data(), static_cast<std::size_t>(count)});
    }
}

void OpenJournal::SkipToEnd() {
    while (Next())
        continue;
}

std::int64_t OpenJournal::Size() const {
    struct stat found {};
    return ::fstat(File_.Number(), &found) == 0 ? found.st_size : 0;
}

} // namespace reader
