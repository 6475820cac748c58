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
    if (const ErrorNumber error = MakeFolders(named); error != NoError)
        return ErrorText(error);
    Descriptor opened(Repeated([&] { return ::open(named.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC); }));
    struct stat found {};
    std::string why;
    if (!opened.Valid())
        why = errno == ELOOP || errno == ENOTDIR ? "it is a link" : ReasonOf(errno);
    else if (::fstat(opened.Number(), &found) != 0)
        why = ReasonOf(errno);
    else
        why = WhyNot(found, forbidden);
    if (!why.empty())
        return modStringTools::FromBytes(path + " can't be used: " + why);
    folder = std::move(opened);
    return {};
}

} // namespace backends
