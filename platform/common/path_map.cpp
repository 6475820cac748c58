// SPDX-License-Identifier: MIT
#include "platform/common/path_map.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
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

} // namespace

ErrorNumber RelativePath(const Text& devicePath, std::string& relative) {
    std::vector<std::string> names = SplitAtBackslashes(modStringTools::ToBytes(devicePath));
    if (names.empty())
        return PathRefused;
    std::string& first = names.front();
    if (first.empty() || first == ".")
        names.erase(names.begin());
    else if (first.back() == ':')
        first.pop_back();
    relative.clear();
    for (const std::string& name : names) {
        if (!IsName(name))
            return PathRefused;
        relative += relative.empty() ? name : '/' + name;
    }
    return NoError;
}

PathMap::PathMap(const std::string& rootFolder) {
    RootError = MakeFolders(rootFolder);
    if (RootError == NoError && !Canonical(rootFolder, Root))
        RootError = FromErrno(errno);
}

ErrorNumber PathMap::OpenRoot(Descriptor& root) const {
    if (RootError != NoError)
        return RootError;
    root = Descriptor(::open(Root.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    return root.Valid() ? NoError : FromErrno(errno);
}

ErrorNumber PathMap::Start(const Text& devicePath, std::string& relative, Descriptor& root) const {
    const ErrorNumber error = OpenRoot(root);
    return error == NoError ? RelativePath(devicePath, relative) : error;
}

ErrorNumber PathMap::Entry(const Text& devicePath, LastLink lastLink, FileEntry& entry) const {
    std::string relative;
    Descriptor root;
    const ErrorNumber error = Start(devicePath, relative, root);
    return error == NoError ? FindBeneath(root.Number(), relative, lastLink, entry) : error;
}

ErrorNumber PathMap::OpenFolder(const Text& devicePath, Descriptor& folder) const {
    std::string relative;
    Descriptor root;
    const ErrorNumber error = Start(devicePath, relative, root);
    return error == NoError ? OpenFolderBeneath(root.Number(), relative, folder) : error;
}

ErrorNumber PathMap::MakeFolder(const Text& devicePath) const {
    std::string relative;
    Descriptor root;
    const ErrorNumber error = Start(devicePath, relative, root);
    return error == NoError ? MakeFoldersBeneath(root.Number(), relative) : error;
}

} // namespace platform::common
