// SPDX-License-Identifier: MIT
#include "backends/files/left_files.h"

#include "backends/files/folder_names.h"
#include "backends/files/host_files.h"

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

constexpr std::time_t OneDay = 24 * 60 * 60;

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

/// A clock that was set back must not make a new file old, so a file of the future is not old.
bool IsLeft(const struct stat& found, const std::string& name) {
    const auto maker = MakerOf(name);
    return maker && S_ISREG(found.st_mode) && found.st_uid == ::geteuid() &&
           std::time(nullptr) - found.st_mtime > OneDay && !IsRunning(*maker);
}

void RemoveFromOpen(const Descriptor& folder, int deep) {
    std::vector<std::string> names;
    static_cast<void>(ReadNames(folder, names));
    for (const std::string& name : names) {
        struct stat found {};
        if (::fstatat(folder.Number(), name.c_str(), &found, AT_SYMLINK_NOFOLLOW) != 0)
            continue;
        if (IsLeft(found, name))
            static_cast<void>(RemoveFrom(folder, name));
        if (!S_ISDIR(found.st_mode) || deep == 0)
            continue;
        constexpr int Flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
        const Descriptor beneath(Repeated([&] { return ::openat(folder.Number(), name.c_str(), Flags); }));
        if (beneath.Valid())
            RemoveFromOpen(beneath, deep - 1);
    }
}

} // namespace

void RemoveLeftFiles(const std::string& folder, int deep) {
    const Descriptor opened(Repeated([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (opened.Valid())
        RemoveFromOpen(opened, deep);
}

} // namespace backends
