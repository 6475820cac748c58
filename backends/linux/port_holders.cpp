// SPDX-License-Identifier: MIT
#include "backends/linux/port_holders.h"

#include "backends/files/folder_names.h"

#include <algorithm>
#include <array>
#include <climits>
#include <sys/stat.h>
#include <unistd.h>

namespace backends {

namespace {

std::string LinkTarget(const std::string& link) {
    std::array<char, PATH_MAX> target;
    const ssize_t length = ::readlink(link.c_str(), target.data(), target.size());
    return length > 0 ? std::string(target.data(), static_cast<std::size_t>(length)) : std::string();
}

bool IsThere(const std::string& path) {
    struct stat found {};
    return ::lstat(path.c_str(), &found) == 0;
}

/// Lock files contain the number with blanks before it, "       812".
std::string WithoutBlanks(const std::string& line) {
    const std::size_t first = line.find_first_not_of(' ');
    return first == std::string::npos ? "" : line.substr(first, line.find_first_of(' ', first) - first);
}

} // namespace

std::map<std::string, PortHolder> HoldersByProcess(const std::vector<std::string>& paths,
                                                   const std::string& processFolder) {
    std::map<std::string, PortHolder> holders;
    const std::string ourselves = std::to_string(::getpid());
    for (const std::string& process : NamesIn(processFolder)) {
        if (NumberAfter("", process).empty() || process == ourselves)
            continue;
        const std::string folder = processFolder + "/" + process;
        for (const std::string& file : NamesIn(folder + "/fd")) {
            const std::string target = LinkTarget(folder + "/fd/" + file);
            if (std::find(paths.begin(), paths.end(), target) != paths.end())
                holders.try_emplace(target, PortHolder{FirstLine(folder + "/comm"), process, ""});
        }
    }
    return holders;
}

std::optional<PortHolder> HolderByLock(const std::string& deviceName, const std::string& lockFolder,
                                       const std::string& processFolder) {
    const std::string lock = lockFolder + "/LCK.." + deviceName;
    if (!IsThere(lock))
        return std::nullopt;
    const std::string process = NumberAfter("", WithoutBlanks(FirstLine(lock)));
    if (process.empty())
        return PortHolder{"", "", lock};
    if (!IsThere(processFolder + "/" + process) || process == std::to_string(::getpid()))
        return std::nullopt;
    return PortHolder{FirstLine(processFolder + "/" + process + "/comm"), process, lock};
}

} // namespace backends
