// SPDX-License-Identifier: MIT
#include "platform/common/path_map.h"

#include "platform/common/host_files.h"

#include <cerrno>
#include <climits>
#include <sys/stat.h>
#include <vector>

namespace platform::common {

namespace {

bool IsName(const std::string& part) {
    constexpr std::string_view forbidden("/:\0", 3);
    return !part.empty() && part.size() <= NAME_MAX && part != "." && part != ".." &&
           part.find_first_of(forbidden) == std::string::npos;
}

std::vector<std::string> SplitAtBackslashes(const std::string& path) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end = path.find('\\'); end != std::string::npos; end = path.find('\\', start)) {
        parts.push_back(path.substr(start, end - start));
        start = end + 1;
    }
    if (start < path.size())
        parts.push_back(path.substr(start));
    return parts;
}

/// The names to walk from the root on; false for a path that is refused.
bool NamesOf(const Text& devicePath, std::vector<std::string>& names) {
    names = SplitAtBackslashes(modStringTools::ToBytes(devicePath));
    if (names.empty())
        return false;
    std::string& first = names.front();
    if (first.empty() || first == ".")
        names.erase(names.begin());
    else if (first.back() == ':')
        first.pop_back();
    for (const std::string& name : names) {
        if (!IsName(name))
            return false;
    }
    return true;
}

} // namespace

PathMap::PathMap(const std::string& rootFolder) {
    RootError = MakeFolders(rootFolder);
    if (RootError == NoError && !Canonical(rootFolder, Root))
        RootError = FromErrno(errno);
    if (Root == "/")
        Root.clear();
}

ErrorNumber PathMap::HostPath(const Text& devicePath, std::string& hostPath) const {
    return Map(devicePath, LastLink::Follow, hostPath);
}

ErrorNumber PathMap::EntryPath(const Text& devicePath, std::string& hostPath) const {
    return Map(devicePath, LastLink::Keep, hostPath);
}

ErrorNumber PathMap::Map(const Text& devicePath, LastLink lastLink, std::string& hostPath) const {
    if (RootError != NoError)
        return RootError;
    std::vector<std::string> names;
    if (!NamesOf(devicePath, names))
        return PathRefused;
    std::string path = Root;
    for (std::size_t i = 0; i < names.size(); ++i) {
        path += '/' + names[i];
        struct stat found {};
        const bool isLink = ::lstat(path.c_str(), &found) == 0 && S_ISLNK(found.st_mode);
        if (!isLink || (lastLink == LastLink::Keep && i + 1 == names.size()))
            continue;
        if (const ErrorNumber error = FollowLink(path); error != NoError)
            return error;
    }
    hostPath = path.empty() ? "/" : path;
    return NoError;
}

ErrorNumber PathMap::FollowLink(std::string& path) const {
    // A link to nothing is refused as well: making a file under its name would make it where the link points.
    std::string target;
    if (!Canonical(path, target) || !Inside(target))
        return PathRefused;
    path = target;
    return NoError;
}

bool PathMap::Inside(const std::string& canonical) const {
    return canonical == Root || canonical.compare(0, Root.size() + 1, Root + '/') == 0;
}

} // namespace platform::common
