// SPDX-License-Identifier: MIT
#include "backends/files/host_files.h"

#include "backends/files/file_rights.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace backends {

namespace {

constexpr std::size_t CopyBlock = 65536;

/// How many names to try for a file beside another one. Each taken name was left behind by a crash.
constexpr int BesideTries = 1000;

ErrorNumber LastError() {
    return FromErrno(errno);
}

ErrorNumber LookAt(const Descriptor& opened, struct stat& found) {
    return Repeated([&] { return ::fstat(opened.Number(), &found); }) == 0 ? NoError : LastError();
}

int OpenIn(const Descriptor& folder, const std::string& name, int flags) {
    return Repeated([&] { return ::openat(folder.Number(), name.c_str(), flags | O_CLOEXEC, OwnersFile); });
}

ErrorNumber MakeOneFolder(const std::string& path) {
    if (Repeated([&] { return ::mkdir(path.c_str(), OwnersFolder); }) == 0)
        return SyncFolder(FolderOf(path));
    const int reason = errno;
    if (IsFolder(path)) // a read-only disk reports EROFS even if the folder exists
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
    case ESTALE:
        return WentStale;
    case EBUSY:
    case ENODEV:
    case ENXIO:
        return NotAvailable;
    default:
        return DeviceFailed;
    }
}

ErrorNumber IdOf(const Descriptor& folder, FolderId& id) {
    struct stat found {};
    const ErrorNumber error = LookAt(folder, found);
    id = {found.st_dev, found.st_ino};
    return error;
}

ErrorNumber EntryAt(const std::string& path, FileEntry& entry) {
    std::string target;
    const ErrorNumber error = Canonical(path, target);
    if (error == FileNotFound)
        target = path;
    else if (error != NoError)
        return error;
    entry.Name = target.substr(target.find_last_of('/') + 1);
    const std::string folder = FolderOf(target);
    entry.Folder = Descriptor(Repeated([&] { return ::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC); }));
    return entry.Folder.Valid() ? NoError : LastError();
}

ErrorNumber OpenRegular(const FileEntry& entry, int flags, Descriptor& file) {
    struct stat found {};
    if (const ErrorNumber error = LookAt(entry, found); error != NoError)
        return error;
    if (!S_ISREG(found.st_mode))
        return PathRefused;
    Descriptor opened(OpenIn(entry.Folder, entry.Name, flags | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW));
    if (!opened.Valid())
        return LastError();
    if (const ErrorNumber error = LookAt(opened, found); error != NoError)
        return error;
    if (!S_ISREG(found.st_mode))
        return PathRefused;
    file = std::move(opened);
    return NoError;
}

ErrorNumber CreateRegular(const Descriptor& folder, const std::string& name, int flags, Descriptor& file) {
    Descriptor made(OpenIn(folder, name, flags | O_CREAT | O_EXCL));
    if (!made.Valid())
        return LastError();
    file = std::move(made);
    return NoError;
}

ErrorNumber WriteAll(int file, std::string_view bytes, std::int64_t offset) {
    while (!bytes.empty()) {
        const ssize_t count = Repeated([&] { return ::pwrite(file, bytes.data(), bytes.size(), offset); });
        if (count <= 0)
            return count < 0 ? LastError() : DiskFull;
        bytes.remove_prefix(static_cast<std::size_t>(count));
        offset += count;
    }
    return NoError;
}

ErrorNumber LookAt(const FileEntry& entry, struct stat& found) {
    const auto look = [&] { return ::fstatat(entry.Folder.Number(), entry.Name.c_str(), &found, AT_SYMLINK_NOFOLLOW); };
    return Repeated(look) == 0 ? NoError : LastError();
}

std::int64_t ReadAt(int file, char* bytes, std::size_t count, std::int64_t offset) {
    return Repeated([&] { return ::pread(file, bytes, count, offset); });
}

ErrorNumber SyncFile(const Descriptor& file) {
    return Repeated([&] { return ::fsync(file.Number()); }) == 0 ? NoError : LastError();
}

ErrorNumber RemoveFrom(const Descriptor& folder, const std::string& name) {
    return Repeated([&] { return ::unlinkat(folder.Number(), name.c_str(), 0); }) == 0 ? NoError : LastError();
}

bool IsFolder(const std::string& path) {
    struct stat found {};
    return Repeated([&] { return ::stat(path.c_str(), &found); }) == 0 && S_ISDIR(found.st_mode);
}

ErrorNumber Canonical(const std::string& path, std::string& canonical) {
    struct Free {
        void operator()(char* text) const { std::free(text); }
    };
    std::unique_ptr<char, Free> found;
    const auto find = [&] {
        found.reset(::realpath(path.c_str(), nullptr));
        return found ? 0 : -1;
    };
    if (Repeated(find) != 0)
        return LastError();
    canonical = found.get();
    return NoError;
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
    const bool synced = folder.Valid() && Repeated([&] { return ::fsync(folder.Number()); }) == 0;
    // Some file systems can't sync a folder, and return EINVAL: there the names need no such step.
    if (synced || (folder.Valid() && errno == EINVAL))
        return NoError;
    const ErrorNumber error = LastError();
    return error == WentStale ? DeviceFailed : error; // the names have been changed, so the step must not be repeated
}

} // namespace

ErrorNumber SyncFolder(const Descriptor& folder) {
    return SyncOpened(Descriptor(OpenIn(folder, ".", O_RDONLY | O_DIRECTORY)));
}

ErrorNumber SyncFolder(const std::string& folder) {
    const auto open = [&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); };
    return SyncOpened(Descriptor(Repeated(open)));
}

namespace {

/// Checks that a file may be replaced, if it exists. A rename would replace a write-protected file without an error.
ErrorNumber MayBeReplaced(const FileEntry& entry, bool& exists) {
    struct stat found {};
    const ErrorNumber error = LookAt(entry, found);
    exists = error == NoError;
    if (!exists)
        return error == FileNotFound ? NoError : error;
    if (!S_ISREG(found.st_mode))
        return PathRefused;
    const auto ask = [&] { return ::faccessat(entry.Folder.Number(), entry.Name.c_str(), W_OK, AT_EACCESS); };
    return Repeated(ask) == 0 ? NoError : LastError();
}

bool Renamed(int from, const std::string& name, int to, const std::string& newName) {
    return Repeated([&] { return ::renameat(from, name.c_str(), to, newName.c_str()); }) == 0;
}

/// Gives a file the rights of the one that it is to replace.
ErrorNumber TakeRights(int file, const FileEntry& target, bool& kept) {
    FileRights rights;
    if (const int error = RightsOf(target.Folder.Number(), target.Name, rights); error != 0)
        return FromErrno(error);
    return FromErrno(GiveRights(file, rights, kept));
}

/// Reports a file to which others have less access than before, once for each file.
void TellRights(const FileEntry& file) {
    struct stat folder {};
    if (Rights.Lost && LookAt(file.Folder, folder) == NoError && Rights.Told.emplace(folder.st_ino, file.Name).second)
        Rights.Lost(file.Name);
}

ErrorNumber CopyBytes(int from, int to) {
    std::array<char, CopyBlock> block;
    for (std::int64_t offset = 0;;) {
        const std::int64_t count = ReadAt(from, block.data(), block.size(), offset);
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
    if (Beside_.Valid())
        static_cast<void>(RemoveFrom(Target_.Folder, BesideName_));
    Beside_.Close();
}

ErrorNumber Replacement::BeginWith(int file) {
    ErrorNumber error = Begin();
    if (error == NoError)
        error = CopyBytes(file, Beside_.Number());
    if (error != NoError)
        GiveUp();
    return error;
}

ErrorNumber Replacement::Begin() {
    bool exists = false;
    if (const ErrorNumber error = MayBeReplaced(Target_, exists); error != NoError)
        return error;
    if (const ErrorNumber error = MakeBeside(); error != NoError)
        return error;
    return exists ? TakeRights(Beside_.Number(), Target_, KeepsRights_) : NoError;
}

ErrorNumber Replacement::MakeBeside() {
    const std::string stem = std::string(ReplacementStem) + std::to_string(::getpid()) + "-";
    for (int attempt = 0; attempt < BesideTries; ++attempt) {
        BesideName_ = stem + std::to_string(attempt);
        const ErrorNumber error = CreateRegular(Target_.Folder, BesideName_, O_RDWR, Beside_);
        if (error != FileExists)
            return error;
    }
    return FileExists;
}

ErrorNumber Replacement::Commit() {
    const int folder = Target_.Folder.Number();
    if (const ErrorNumber error = SyncFile(Beside_); error != NoError)
        return error;
    if (!Renamed(folder, BesideName_, folder, Target_.Name))
        return LastError();
    if (!KeepsRights_)
        TellRights(Target_);
    const ErrorNumber closed = FromErrno(Beside_.Close());
    const ErrorNumber synced = SyncFolder(Target_.Folder);
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
    if (const ErrorNumber error = SyncFile(moved); error != NoError)
        return error;
    const int from = source.Folder.Number();
    if (Renamed(from, source.Name, target.Folder.Number(), target.Name)) {
        if (!keepsRights)
            TellRights(target);
        return SyncFolder(target.Folder);
    }
    if (errno != EXDEV)
        return LastError();
    const ErrorNumber error = CopyOver(source, std::move(target));
    return error == NoError ? RemoveFrom(source.Folder, source.Name) : error;
}

} // namespace backends
