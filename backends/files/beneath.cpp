// SPDX-License-Identifier: MIT
#include "backends/files/beneath.h"

#include <array>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#if __has_include(<linux/openat2.h>)
#include <linux/openat2.h>
#include <sys/syscall.h>
#endif

namespace backends {

namespace {

constexpr int FolderFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;

/// The limit of the kernel for one path.
constexpr int MostLinks = 40;

/// Opens the folder with openat2(2). Returns nothing if that call is not available.
std::optional<ErrorNumber> AskKernel(int folder, const std::string& relative, Descriptor& found) {
#ifdef SYS_openat2
    constexpr int Tries = 100; // the kernel asks for it if folders are renamed at the same time
    open_how how{};
    how.flags = FolderFlags;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;
    const char* path = relative.empty() ? "." : relative.c_str();
    for (int attempt = 0; attempt < Tries; ++attempt) {
        const auto opened = Repeated([&] { return ::syscall(SYS_openat2, folder, path, &how, sizeof how); });
        if (opened >= 0) {
            found = Descriptor(static_cast<int>(opened));
            return NoError;
        }
        if (errno != EAGAIN)
            break;
    }
    // A container may refuse the call with EPERM, where the kernel itself would return ENOSYS.
    if (errno == ENOSYS || errno == EPERM)
        return std::nullopt;
    return errno == EXDEV ? PathRefused : FromErrno(errno);
#else
    static_cast<void>(folder), static_cast<void>(relative), static_cast<void>(found);
    return std::nullopt;
#endif
}

/// Reads the target of a link. `target` is empty when the entry is not a link or does not exist.
ErrorNumber TargetOf(int folder, const std::string& name, std::optional<std::string>& target) {
    std::array<char, PATH_MAX> bytes;
    const ssize_t count = Repeated([&] { return ::readlinkat(folder, name.c_str(), bytes.data(), bytes.size()); });
    if (static_cast<std::size_t>(count) == bytes.size())
        return PathRefused;
    if (count >= 0) {
        target.emplace(bytes.data(), static_cast<std::size_t>(count));
        return NoError;
    }
    target.reset();
    return errno == EINVAL || errno == ENOENT ? NoError : FromErrno(errno);
}

/// Adds the parts of a path to those that a walk still has to visit; the first part of the path becomes the next one.
void PutBefore(const std::string& path, std::vector<std::string>& ahead) {
    for (std::size_t end = path.size(); end != std::string::npos;) {
        const std::size_t slash = end == 0 ? std::string::npos : path.rfind('/', end - 1);
        const std::size_t start = slash == std::string::npos ? 0 : slash + 1;
        ahead.push_back(path.substr(start, end - start));
        end = slash;
    }
}

bool IsAbsolute(const std::string& path) {
    return !path.empty() && path.front() == '/';
}

/// A walk down from a folder that remembers its way, so that `..` in a link can be followed back.
class Walk {
public:
    Walk(int folder, const std::string& relative) : Start_(folder) { PutBefore(relative, Ahead_); }

    ErrorNumber ToItsEnd(Descriptor& found) {
        while (!Ahead_.empty()) {
            const std::string part = Ahead_.back();
            Ahead_.pop_back();
            if (const ErrorNumber error = Step(part); error != NoError)
                return error;
        }
        found = Descriptor(Repeated([this] { return ::openat(Here(), ".", FolderFlags); }));
        return found.Valid() ? NoError : FromErrno(errno);
    }

private:
    int Here() const { return Behind_.empty() ? Start_ : Behind_.back().Number(); }

    ErrorNumber Step(const std::string& part) {
        if (part.empty() || part == ".")
            return NoError;
        if (part == "..")
            return Back();
        Descriptor next(Repeated([&] { return ::openat(Here(), part.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC); }));
        struct stat found {};
        if (!next.Valid() || Repeated([&] { return ::fstat(next.Number(), &found); }) != 0)
            return FromErrno(errno);
        if (S_ISLNK(found.st_mode))
            return Follow(next.Number());
        if (!S_ISDIR(found.st_mode))
            return FileNotFound;
        Behind_.push_back(std::move(next));
        return NoError;
    }

    ErrorNumber Back() {
        if (Behind_.empty())
            return PathRefused;
        Behind_.pop_back();
        return NoError;
    }

    ErrorNumber Follow(int link) {
        std::optional<std::string> target;
        if (const ErrorNumber error = TargetOf(link, "", target); error != NoError)
            return error;
        if (!target || IsAbsolute(*target) || ++Links_ > MostLinks)
            return PathRefused;
        PutBefore(*target, Ahead_);
        return NoError;
    }

    int Start_;
    std::vector<Descriptor> Behind_; ///< the open folders from the start to here
    std::vector<std::string> Ahead_; ///< parts still to visit, the next one at the end
    int Links_ = 0;
};

/// A path split into its folder and the name in it.
struct Parted {
    explicit Parted(const std::string& path) {
        const std::size_t slash = path.rfind('/');
        Folder = slash == std::string::npos ? std::string() : path.substr(0, slash);
        Name = slash == std::string::npos ? path : path.substr(slash + 1);
    }
    bool NamesAnEntry() const { return !Name.empty() && Name != "." && Name != ".."; }

    std::string Folder;
    std::string Name;
};

/// Refuses a dangling link.
ErrorNumber EndOfLinks(const FileEntry& entry) {
    struct stat found {};
    const ErrorNumber error = LookAt(entry, found);
    return error == FileNotFound ? PathRefused : error;
}

ErrorNumber MakeOneFolder(int folder, const std::string& relative) {
    Descriptor found;
    const ErrorNumber error = OpenFolderBeneath(folder, relative, found);
    if (error != FileNotFound)
        return error;
    FileEntry entry;
    if (const ErrorNumber above = FindBeneath(folder, relative, LastLink::Keep, entry); above != NoError)
        return above;
    if (Repeated([&] { return ::mkdirat(entry.Folder.Number(), entry.Name.c_str(), OwnersFolder); }) == 0)
        return SyncFolder(entry.Folder);
    // Another program may have created it meanwhile; or a file or a dangling link has this name.
    return errno == EEXIST ? OpenFolderBeneath(folder, relative, found) : FromErrno(errno);
}

} // namespace

ErrorNumber OpenFolderBeneath(int folder, const std::string& relative, Descriptor& found) {
    if (const auto answer = AskKernel(folder, relative, found))
        return *answer;
    return WalkBeneath(folder, relative, found);
}

ErrorNumber WalkBeneath(int folder, const std::string& relative, Descriptor& found) {
    if (IsAbsolute(relative) || relative.size() >= PATH_MAX)
        return PathRefused;
    return Walk(folder, relative).ToItsEnd(found);
}

ErrorNumber FindBeneath(int folder, const std::string& relative, LastLink lastLink, FileEntry& entry) {
    std::string path = relative;
    for (int links = 0; links <= MostLinks; ++links) {
        const Parted parted(path);
        if (!parted.NamesAnEntry())
            return PathRefused;
        if (const ErrorNumber error = OpenFolderBeneath(folder, parted.Folder, entry.Folder); error != NoError)
            return error;
        entry.Name = parted.Name;
        std::optional<std::string> target;
        if (lastLink == LastLink::Follow) {
            if (const ErrorNumber error = TargetOf(entry.Folder.Number(), entry.Name, target); error != NoError)
                return error;
        }
        if (!target)
            return links == 0 ? NoError : EndOfLinks(entry);
        if (IsAbsolute(*target))
            return PathRefused;
        path = parted.Folder.empty() ? *target : parted.Folder + '/' + *target;
    }
    return PathRefused;
}

ErrorNumber MakeFoldersBeneath(int folder, const std::string& relative) {
    if (relative.empty())
        return NoError;
    if (relative.size() >= PATH_MAX)
        return PathRefused;
    for (std::size_t end = relative.find('/');; end = relative.find('/', end + 1)) {
        if (const ErrorNumber error = MakeOneFolder(folder, relative.substr(0, end)); error != NoError)
            return error;
        if (end == std::string::npos)
            return NoError;
    }
}

} // namespace backends
