// SPDX-License-Identifier: MIT
#include "backends/host/private_folder.h"

#include <fcntl.h>
#include <unistd.h>

namespace backends {

namespace {

/// A slash at the end of a path would follow a link.
std::string WithoutSlashes(std::string path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

std::string WhyNot(const struct stat& found, unsigned forbidden) {
    if (found.st_uid != ::geteuid())
        return "it belongs to another user";
    if ((found.st_mode & forbidden) != 0)
        return (forbidden & S_IRUSR >> 3U) != 0 ? "others may use it" : "others may write to it";
    return {};
}

} // namespace

Text OpenPrivateFolder(const std::string& path, unsigned forbidden, Descriptor& folder) {
    const std::string named = WithoutSlashes(path);
    const ErrorNumber error = MakeFolders(named);
    struct stat found {};
    const bool exists = ::lstat(named.c_str(), &found) == 0;
    std::string why;
    if (exists && S_ISLNK(found.st_mode))
        why = "it is a link";
    else if (exists && !S_ISDIR(found.st_mode))
        why = "it is a file";
    else if (error != NoError)
        why = modStringTools::ToBytes(ErrorText(error));
    if (why.empty()) {
        folder = Descriptor(
            Repeated([&] { return ::open(named.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC); }));
        const bool opened = folder.Valid() && ::fstat(folder.Number(), &found) == 0;
        why = opened ? WhyNot(found, forbidden) : ReasonOf(errno);
    }
    return why.empty() ? Text() : modStringTools::FromBytes(why + ": " + path);
}

} // namespace backends
