// SPDX-License-Identifier: MIT
#include "platform/common/host_files.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace platform::common {

namespace {

constexpr std::size_t CopyBlock = 65536;

/// Names to try beside a file before giving up; each one taken is what a crash left behind.
constexpr int BesideTries = 1000;

ErrorNumber LastError() {
    return FromErrno(errno);
}

bool IsOfKind(const std::string& path, mode_t kind) {
    struct stat found {};
    return ::stat(path.c_str(), &found) == 0 && (found.st_mode & S_IFMT) == kind;
}

ErrorNumber MakeOneFolder(const std::string& path) {
    if (::mkdir(path.c_str(), 0777) == 0)
        return SyncFolder(FolderOf(path));
    if (errno != EEXIST)
        return LastError();
    return IsFolder(path) ? NoError : FileNotFound;
}

} // namespace

ErrorNumber FromErrno(int code) {
    switch (code) {
    case 0:
        return NoError;
    case ENOENT:
    case ENOTDIR:
        return FileNotFound;
    case EEXIST:
        return FileExists;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return DiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case ETXTBSY:
        return PermissionDenied;
    case ENAMETOOLONG:
    case ELOOP:
    case EILSEQ:
    case EINVAL:
        return PathRefused;
    case EBUSY:
    case ENODEV:
    case ENXIO:
        return NotAvailable;
    default:
        return DeviceFailed;
    }
}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    if (this != &other) {
        Close();
        Value = other.Value;
        other.Value = -1;
    }
    return *this;
}

ErrorNumber Descriptor::Close() {
    if (Value < 0)
        return NoError;
    const int closed = ::close(Value);
    Value = -1;
    // An interrupted close has released the number all the same.
    return closed == 0 || errno == EINTR ? NoError : LastError();
}

ErrorNumber OpenRegular(const std::string& path, int flags, Descriptor& file) {
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0)
        return LastError();
    if (!S_ISREG(found.st_mode))
        return PathRefused;
    Descriptor opened(::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW));
    if (!opened.Valid() || ::fstat(opened.Number(), &found) != 0)
        return LastError();
    if (!S_ISREG(found.st_mode))
        return PathRefused;
    file = std::move(opened);
    return NoError;
}

ErrorNumber CreateRegular(const std::string& path, int flags, Descriptor& file) {
    Descriptor made(::open(path.c_str(), flags | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!made.Valid())
        return LastError();
    file = std::move(made);
    return NoError;
}

ErrorNumber WriteAll(int file, std::string_view bytes, std::int64_t offset) {
    while (!bytes.empty()) {
        const ssize_t count = ::pwrite(file, bytes.data(), bytes.size(), offset);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return count < 0 ? LastError() : DiskFull;
        bytes.remove_prefix(static_cast<std::size_t>(count));
        offset += count;
    }
    return NoError;
}

bool IsRegularFile(const std::string& path) {
    return IsOfKind(path, S_IFREG);
}

bool IsFolder(const std::string& path) {
    return IsOfKind(path, S_IFDIR);
}

bool Canonical(const std::string& path, std::string& canonical) {
    struct Free {
        void operator()(char* text) const { std::free(text); }
    };
    const std::unique_ptr<char, Free> found(::realpath(path.c_str(), nullptr));
    if (!found)
        return false;
    canonical = found.get();
    return true;
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

ErrorNumber MakeFolders(const std::string& path) {
    for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
        if (const ErrorNumber error = MakeOneFolder(path.substr(0, end)); error != NoError)
            return error;
        if (end == std::string::npos)
            return NoError;
    }
}

ErrorNumber SyncFolder(const std::string& folder) {
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.Valid())
        return LastError();
    // Some file systems can't sync a folder, and say so: their names need no such step.
    return ::fsync(opened.Number()) == 0 || errno == EINVAL ? NoError : LastError();
}

namespace {

/// Looks at a file that is to be replaced, if it is there. A rename would replace a write-protected one without a word.
ErrorNumber MayBeReplaced(const std::string& path, bool& exists, mode_t& permissions) {
    struct stat found {};
    exists = ::stat(path.c_str(), &found) == 0;
    permissions = found.st_mode & 07777;
    if (!exists)
        return errno == ENOENT ? NoError : LastError();
    if (!S_ISREG(found.st_mode))
        return PathRefused;
    return ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0 ? NoError : LastError();
}

/// A card's file system may hold no permissions, and refuse: there is nothing to keep then.
ErrorNumber Permit(int file, mode_t permissions) {
    struct stat found {};
    if (::fstat(file, &found) == 0 && (found.st_mode & 07777) == permissions)
        return NoError;
    return ::fchmod(file, permissions) == 0 || errno == EPERM ? NoError : LastError();
}

ErrorNumber CopyBytes(int from, int to) {
    std::array<char, CopyBlock> block;
    for (std::int64_t offset = 0;;) {
        const ssize_t count = ::read(from, block.data(), block.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return count < 0 ? LastError() : NoError;
        const std::string_view bytes(block.data(), static_cast<std::size_t>(count));
        if (const ErrorNumber error = WriteAll(to, bytes, offset); error != NoError)
            return error;
        offset += count;
    }
}

} // namespace

Replacement::~Replacement() {
    if (Beside.Valid())
        ::unlink(BesideName.c_str());
}

ErrorNumber Replacement::Begin() {
    bool exists = false;
    mode_t permissions = 0;
    if (const ErrorNumber error = MayBeReplaced(Target, exists, permissions); error != NoError)
        return error;
    if (const ErrorNumber error = MakeBeside(FolderOf(Target)); error != NoError)
        return error;
    return exists ? Permit(Beside.Number(), permissions) : NoError;
}

ErrorNumber Replacement::MakeBeside(const std::string& folder) {
    const std::string stem = folder + "/.quorin-" + std::to_string(::getpid()) + "-";
    for (int attempt = 0; attempt < BesideTries; ++attempt) {
        BesideName = stem + std::to_string(attempt);
        const ErrorNumber error = CreateRegular(BesideName, O_WRONLY, Beside);
        if (error != FileExists)
            return error;
    }
    return FileExists;
}

ErrorNumber Replacement::Commit() {
    if (::fsync(Beside.Number()) != 0 || ::rename(BesideName.c_str(), Target.c_str()) != 0)
        return LastError();
    const ErrorNumber closed = Beside.Close();
    const ErrorNumber synced = SyncFolder(FolderOf(Target));
    return closed != NoError ? closed : synced;
}

ErrorNumber CopyOver(const std::string& source, const std::string& target) {
    Descriptor original;
    if (const ErrorNumber error = OpenRegular(source, O_RDONLY, original); error != NoError)
        return error;
    Replacement copy(target);
    if (const ErrorNumber error = copy.Begin(); error != NoError)
        return error;
    if (const ErrorNumber error = CopyBytes(original.Number(), copy.File()); error != NoError)
        return error;
    return copy.Commit();
}

ErrorNumber MoveOver(const std::string& source, const std::string& target) {
    bool exists = false;
    mode_t permissions = 0;
    if (const ErrorNumber error = MayBeReplaced(target, exists, permissions); error != NoError)
        return error;
    Descriptor moved;
    if (const ErrorNumber error = OpenRegular(source, O_RDONLY, moved); error != NoError)
        return error;
    if (exists) {
        if (const ErrorNumber error = Permit(moved.Number(), permissions); error != NoError)
            return error;
    }
    if (::fsync(moved.Number()) != 0)
        return LastError();
    if (::rename(source.c_str(), target.c_str()) == 0)
        return SyncFolder(FolderOf(target));
    if (errno != EXDEV)
        return LastError();
    const ErrorNumber error = CopyOver(source, target);
    return error == NoError && ::unlink(source.c_str()) != 0 ? LastError() : error;
}

} // namespace platform::common
