// SPDX-License-Identifier: MIT
#include "backends/files/path_map.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <vector>

namespace backends {

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
    else
        return PathRefused;
    relative.clear();
    for (const std::string& name : names) {
        if (!IsName(name))
            return PathRefused;
        relative += relative.empty() ? name : '/' + name;
    }
    return NoError;
}

PathMap::PathMap(const std::string& rootFolder) : Named_(rootFolder) {
    MakeFolders(rootFolder); // a failure shows each time the root is opened
    static_cast<void>(backends::Canonical(rootFolder, Canonical_));
}

ErrorNumber PathMap::OpenRoot(Descriptor& root) const {
    const char* const path = Canonical_.empty() ? Named_.c_str() : Canonical_.c_str();
    root = Descriptor(Repeated([path] { return ::open(path, O_PATH | O_DIRECTORY | O_CLOEXEC); }));
    return root.Valid() ? NoError : FromErrno(errno);
}

/// Runs a step on the open root and the relative path.
template <class Step>
ErrorNumber PathMap::LookUp(const Text& devicePath, Step step) const {
    std::string relative;
    if (const ErrorNumber error = RelativePath(devicePath, relative); error != NoError)
        return error;
    return FoundAnew([&] {
        Descriptor root;
        const ErrorNumber error = OpenRoot(root);
        return error == NoError ? step(root.Number(), relative) : error;
    });
}

ErrorNumber PathMap::Entry(const Text& devicePath, LastLink lastLink, FileEntry& entry) const {
    return LookUp(devicePath,
                  [&](int root, const std::string& relative) { return FindBeneath(root, relative, lastLink, entry); });
}

ErrorNumber PathMap::OpenFolder(const Text& devicePath, Descriptor& folder) const {
    return LookUp(devicePath,
                  [&](int root, const std::string& relative) { return OpenFolderBeneath(root, relative, folder); });
}

ErrorNumber PathMap::MakeFolder(const Text& devicePath) const {
    return LookUp(devicePath, [&](int root, const std::string& relative) {
        Descriptor volume;
        const bool onAVolume = devicePath.find(u':') != Text::npos;
        const ErrorNumber error =
            onAVolume ? OpenFolderBeneath(root, relative.substr(0, relative.find('/')), volume) : NoError;
        return error == NoError ? MakeFoldersBeneath(root, relative) : error;
    });
}

ErrorNumber PathMap::MakeVolume(const Text& volume) const {
    return LookUp(volume, [](int root, const std::string& relative) { return MakeFoldersBeneath(root, relative); });
}

} // namespace backends
