// SPDX-License-Identifier: MIT
#include "backends/files/folder_names.h"

#include "src/text/printable.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace backends {

namespace {

/// Longer first lines are cut: the expected ones are far shorter.
constexpr std::size_t LongestLine = 256;

struct CloseFolder {
    void operator()(DIR* opened) const { ::closedir(opened); }
};

using OpenedFolder = std::unique_ptr<DIR, CloseFolder>;

OpenedFolder Opened(int folder, const std::string& name) {
    const int opened = Repeated([&] { return ::openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    return OpenedFolder(opened < 0 ? nullptr : ::fdopendir(opened));
}

/// Reads the names of a folder. If it could not be opened, errno has the reason.
ErrorNumber ReadOpened(const OpenedFolder& opened, std::vector<std::string>& names) {
    names.clear();
    if (!opened)
        return FromErrno(errno);
    errno = 0;
    while (const dirent* entry = ::readdir(opened.get())) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..")
            names.push_back(name);
        errno = 0; // only errno distinguishes the end of the folder from a failure
    }
    const ErrorNumber error = FromErrno(errno);
    std::sort(names.begin(), names.end());
    return error;
}

} // namespace

std::vector<std::string> NamesIn(const std::string& folder) {
    std::vector<std::string> names;
    static_cast<void>(ReadOpened(Opened(AT_FDCWD, folder), names));
    return names;
}

ErrorNumber ReadNames(const Descriptor& folder, std::vector<std::string>& names) {
    return ReadOpened(Opened(folder.Number(), "."), names);
}

std::string NameOf(const std::string& path) {
    return path.substr(path.find_last_of('/') + 1);
}

std::string NumberAfter(const std::string& stem, const std::string& name) {
    if (name.size() <= stem.size() || name.compare(0, stem.size(), stem) != 0)
        return {};
    const std::string digits = name.substr(stem.size());
    const bool all = std::all_of(digits.begin(), digits.end(), [](char digit) { return digit >= '0' && digit <= '9'; });
    return all && (digits.size() == 1 || digits[0] != '0') ? digits : std::string();
}

std::string FirstLine(const std::string& path) {
    const auto open = [&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); };
    const Descriptor file(Repeated(open));
    std::array<char, LongestLine> block;
    const auto read = [&] { return ::read(file.Number(), block.data(), block.size()); };
    const ssize_t count = file.Valid() ? Repeated(read) : 0;
    const std::string bytes(block.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    return modStringTools::Printable(bytes.substr(0, bytes.find('\n')));
}

} // namespace backends
