// SPDX-License-Identifier: MIT
#include "backends/files/left_files.h"

#include "backends/files/folder_names.h"
#include "backends/files/host_files.h"

#include <algorithm>
#include <charconv>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace backends {

namespace {

/// Takes a number from the start of a text.
std::optional<pid_t> TakeNumber(std::string_view& text) {
    pid_t number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec != std::errc() || number < 0)
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
    return number;
}

/// Returns the process in a name such as ".quorin-4711-0"; nothing for any other name.
std::optional<pid_t> MakerOf(std::string_view name) {
    if (name.substr(0, ReplacementStem.size()) != ReplacementStem)
        return std::nullopt;
    name.remove_prefix(ReplacementStem.size());
    const auto process = TakeNumber(name);
    if (!process || *process == 0 || name.empty() || name.front() != '-')
        return std::nullopt;
    name.remove_prefix(1);
    return TakeNumber(name) && name.empty() ? process : std::nullopt;
}

bool IsRunning(pid_t process) {
    return ::kill(process, 0) == 0 || errno != ESRCH;
}

/// True for a name such as "00471108.txt".
bool IsScratchName(std::string_view name) {
    constexpr std::string_view::size_type Digits = 8;
    return name.size() > Digits && name.substr(Digits) == ".txt" && name.find_first_not_of("0123456789") == Digits;
}

Descriptor OpenFolder(const std::string& folder) {
    return Descriptor(Repeated([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
}

/// A clock that was set back must not make a new file old, so a file of the future is not old.
bool IsLeft(const struct stat& found, const std::string& name, std::time_t age) {
    const auto maker = MakerOf(name);
    return maker && S_ISREG(found.st_mode) && found.st_uid == ::geteuid() &&
           std::time(nullptr) - found.st_mtime >= age && !IsRunning(*maker);
}

void RemoveFromOpen(const Descriptor& folder, int deep, std::time_t age) {
    std::vector<std::string> names;
    static_cast<void>(ReadNames(folder, names));
    for (const std::string& name : names) {
        struct stat found {};
        if (::fstatat(folder.Number(), name.c_str(), &found, AT_SYMLINK_NOFOLLOW) != 0)
            continue;
        if (IsLeft(found, name, age))
            static_cast<void>(RemoveFrom(folder, name));
        if (!S_ISDIR(found.st_mode) || deep == 0)
            continue;
        constexpr int Flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
        const Descriptor beneath(Repeated([&] { return ::openat(folder.Number(), name.c_str(), Flags); }));
        if (beneath.Valid())
            RemoveFromOpen(beneath, deep - 1, age);
    }
}

} // namespace

void RemoveLeftFiles(const std::string& folder, int deep, std::time_t age) {
    const Descriptor opened = OpenFolder(folder);
    if (opened.Valid())
        RemoveFromOpen(opened, deep, age);
}

std::vector<LeftTable> LeftTables(const std::string& folder) {
    const Descriptor opened = OpenFolder(folder);
    std::vector<std::string> names;
    if (opened.Valid())
        static_cast<void>(ReadNames(opened, names));
    std::sort(names.begin(), names.end());
    std::vector<LeftTable> tables;
    for (const std::string& name : names) {
        struct stat found {};
        if (IsScratchName(name) && ::fstatat(opened.Number(), name.c_str(), &found, AT_SYMLINK_NOFOLLOW) == 0 &&
            S_ISREG(found.st_mode))
            tables.push_back({name, found.st_size, found.st_mtime});
    }
    return tables;
}

} // namespace backends
