// SPDX-License-Identifier: MIT
#include "platform/common/host_files.h"

#include "platform/common/file_rights.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <set>
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

bool LookAt(const FileEntry& entry, struct stat& found) {
    return ::fstatat(entry.Folder.Number(), entry.Name.c_str(), &found, AT_SYMLINK_NOFOLLOW) == 0;
}

ErrorNumber MakeOneFolder(const std::string& path) {
    if (::mkdir(path.c_str(), OwnersFolder) == 0)
        return SyncFolder(FolderOf(path));
    const int reason = errno;
    if (IsFolder(path)) // a read-only disk says that it is read-only, and not that the folder is there
        return NoError;
    return reason == EEXIST ? FileNotFound : FromErrno(reason);
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

std::string ReasonOf(int code) {
    const char* reason = ::strerrordesc_np(code);
    return reason != nullptr ? reason : "error " + std::to_string(code);
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

ErrorNumber IdOf(const Descriptor& folder, FolderId& id) {
    struct stat found {};
    if (::fstat(folder.Number(), &found) != 0)
        return LastError();
    id = {found.st_dev, found.st_ino};
    return NoError;
}

ErrorNumber EntryAt(const std::string& path, FileEntry& entry) {
    std::string target;
    if (!Canonical(path, target))
        target = path;
    entry.Name = target.substr(target.find_last_of('/') + 1);
    entry.Folder = Descriptor(::open(FolderOf(target).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    return entry.Folder.Valid() ? NoError : LastError();
}

ErrorNumber OpenRegular(const FileEntry& entry, int flags, Descriptor& file) {
    struct stat found {};
    if (!LookAt(entry, found))
        return LastError();
    if (!S_ISREG(found.st_mode))
        return PathRefused;
    const int safely = O_CLOEXEC | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW;
    Descriptor opened(::openat(entry.Folder.Number(), entry.Name.c_str(), flags | safely));
    if (!opened.Valid() || ::fstat(opened.Number(), &found) != 0)
        return LastError();
    if (!S_ISREG(found.st_mode))
        return PathRefused;
    file = std::move(opened);
    return NoError;
}

ErrorNumber CreateRegular(const Descriptor& folder, const std::string& name, int flags, Descriptor& file) {
    Descriptor made(::openat(folder.Number(), name.c_str(), flags | O_CREAT | O_EXCL | O_CLOEXEC, OwnersFile));
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

bool IsThere(const FileEntry& entry) {
    struct stat found {};
    return LookAt(entry, found);
}

bool IsRegularFile(const FileEntry& entry) {
    struct stat found {};
    return LookAt(entry, found) && S_ISREG(found.st_mode);
}

bool IsFolder(const std::string& path) {
    struct stat found {};
    return ::stat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode);
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

namespace {

ErrorNumber SyncOpened(const Descriptor& folder) {
    if (!folder.Valid())
        return LastError();
    // Some file systems can't sync a folder, and say so: their names need no such step.
    return ::fsync(folder.Number()) == 0 || errno == EINVAL ? NoError : LastError();
}

} // namespace

ErrorNumber SyncFolder(const Descriptor& folder) {
    return SyncOpened(Descriptor(::openat(folder.Number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)));
}

ErrorNumber SyncFolder(const std::string& folder) {
    return SyncOpened(Descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)));
}

namespace {

/// Looks at a file that is to be replaced, if it is there. A rename would replace a write-protected one without a word.
ErrorNumber MayBeReplaced(const FileEntry& entry, bool& exists) {
    struct stat found {};
    exists = LookAt(entry, found);
    if (!exists)
        return errno == ENOENT ? NoError : LastError();
    if (!S_ISREG(found.st_mode))
        return PathRefused;
    const int mayWrite = ::faccessat(entry.Folder.Number(), entry.Name.c_str(), W_OK, AT_EACCESS);
    return mayWrite == 0 ? NoError : LastError();
}

/// Gives a file the rights of the one whose place it is to take.
ErrorNumber TakeRights(int file, const FileEntry& target, bool& kept) {
    FileRights rights;
    if (const int error = RightsOf(target.Folder.Number(), target.Name, rights); error != 0)
        return FromErrno(error);
    return FromErrno(GiveRights(file, rights, kept));
}

/// Tells once of each file that others may do less with than before.
void TellRights(const FileEntry& file) {
    static std::set<std::pair<ino_t, std::string>> told; // a name stays where the file itself is another one each time
    struct stat folder {};
    if (RightsLost && ::fstat(file.Folder.Number(), &folder) == 0 && told.emplace(folder.st_ino, file.Name).second)
        RightsLost(file.Name);
}

ErrorNumber CopyBytes(int from, int to) {
    std::array<char, CopyBlock> block;
    for (std::int64_t offset = 0;;) {
        const ssize_t count = ::pread(from, block.data(), block.size(), offset);
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
    GiveUp();
}

void Replacement::GiveUp() {
    if (Beside.Valid())
        ::unlinkat(Target.Folder.Number(), BesideName.c_str(), 0);
    Beside.Close();
}

ErrorNumber Replacement::BeginWith(int file) {
    ErrorNumber error = Begin();
    if (error == NoError)
        error = CopyBytes(file, Beside.Number());
    if (error != NoError)
        GiveUp();
    return error;
}

ErrorNumber Replacement::Begin() {
    bool exists = false;
    if (const ErrorNumber error = MayBeReplaced(Target, exists); error != NoError)
        return error;
    if (const ErrorNumber error = MakeBeside(); error != NoError)
        return error;
    return exists ? TakeRights(Beside.Number(), Target, KeepsRights) : NoError;
}

ErrorNumber Replacement::MakeBeside() {
    const std::string stem = ".quorin-" + std::to_string(::getpid()) + "-";
    for (int attempt = 0; attempt < BesideTries; ++attempt) {
        BesideName = stem + std::to_string(attempt);
        const ErrorNumber error = CreateRegular(Target.Folder, BesideName, O_RDWR, Beside);
        if (error != FileExists)
            return error;
    }
    return FileExists;
}

ErrorNumber Replacement::Commit() {
    const int folder = Target.Folder.Number();
    if (::fsync(Beside.Number()) != 0 || ::renameat(folder, BesideName.c_str(), folder, Target.Name.c_str()) != 0)
        return LastError();
    if (!KeepsRights)
        TellRights(Target);
    const ErrorNumber closed = Beside.Close();
    const ErrorNumber synced = SyncFolder(Target.Folder);
    return closed != NoError ? closed : synced;
}

ErrorNumber CopyOver(const FileEntry& source, FileEntry target) {
    Descriptor original;
    if (const ErrorNumber error = OpenRegular(source, O_RDONLY, original); error != NoError)
        return error;
    Replacement copy(std::move(target));
    const ErrorNumber error = copy.BeginWith(original.Number());
    return error == NoError ? copy.Commit() : error;
}

ErrorNumber MoveOver(const FileEntry& source, FileEntry target) {
    bool exists = false;
    bool keepsRights = true;
    if (const ErrorNumber error = MayBeReplaced(target, exists); error != NoError)
        return error;
    Descriptor moved;
    if (const ErrorNumber error = OpenRegular(source, O_RDONLY, moved); error != NoError)
        return error;
    if (exists) {
        if (const ErrorNumber error = TakeRights(moved.Number(), target, keepsRights); error != NoError)
            return error;
    }
    if (::fsync(moved.Number()) != 0)
        return LastError();
    const int from = source.Folder.Number();
    if (::renameat(from, source.Name.c_str(), target.Folder.Number(), target.Name.c_str()) == 0) {
        if (!keepsRights)
            TellRights(target);
        return SyncFolder(target.Folder);
    }
    if (errno != EXDEV)
        return LastError();
    const ErrorNumber error = CopyOver(source, std::move(target));
    return error == NoError && ::unlinkat(from, source.Name.c_str(), 0) != 0 ? LastError() : error;
}

} // namespace platform::common
