// SPDX-License-Identifier: MIT
#include "platform/common/root_lock.h"

#include "platform/common/folder_names.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform::common {

namespace {

constexpr const char* LockName = "/.quorin.lock";

/// How often a lock file may be removed under our hands before we give up.
constexpr int Tries = 10;

constexpr int OpenFlags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;

Descriptor OpenLock(const std::string& path) {
    Descriptor opened(::open(path.c_str(), O_RDWR | O_CREAT | OpenFlags, OwnersFile));
    // Another user's file may be locked all the same, and it must be noticed that it is.
    if (!opened.Valid() && errno == EACCES)
        opened = Descriptor(::open(path.c_str(), O_RDONLY | OpenFlags));
    return opened;
}

/// The error of locking; 0 when it is locked.
int Lock(int file) {
    while (::flock(file, LOCK_EX | LOCK_NB) != 0)
        if (errno != EINTR)
            return errno;
    return 0;
}

bool IsRegular(int file) {
    struct stat found {};
    return ::fstat(file, &found) == 0 && S_ISREG(found.st_mode);
}

bool IsStillAt(const std::string& path, int file) {
    struct stat here {};
    struct stat there {};
    return ::fstat(file, &here) == 0 && ::lstat(path.c_str(), &there) == 0 && here.st_dev == there.st_dev &&
           here.st_ino == there.st_ino;
}

/// The line is for people; a full disk has no room for it, and the lock holds without.
void WriteLine(int file, const std::string& line) {
    const bool written = WriteAll(file, line, 0) == NoError && ::ftruncate(file, static_cast<off_t>(line.size())) == 0;
    static_cast<void>(written);
}

} // namespace

LockResult RootLock::Take(const std::string& rootFolder, const std::string& program) {
    Release();
    Folder = rootFolder;
    HolderLine.clear();
    MakeFolders(rootFolder); // where that fails, so does opening the file
    const std::string path = rootFolder + LockName;
    for (int attempt = 0; attempt < Tries; ++attempt) {
        const LockResult result = TakeOpened(OpenLock(path), path);
        if (result != LockResult::Held)
            return result;
        if (IsStillAt(path, File.Number())) {
            WriteLine(File.Number(), program + " " + std::to_string(::getpid()) + "\n");
            return LockResult::Held;
        }
    }
    File.Close();
    return LockResult::NotLockable;
}

LockResult RootLock::TakeOpened(Descriptor opened, const std::string& path) {
    if (!opened.Valid() || !IsRegular(opened.Number()))
        return LockResult::NotLockable;
    const int error = Lock(opened.Number());
    if (error == EWOULDBLOCK) {
        HolderLine = FirstLine(path);
        if (HolderLine.empty())
            HolderLine = "another program";
        return LockResult::Taken;
    }
    if (error != 0)
        return LockResult::NotLockable;
    File = std::move(opened);
    return LockResult::Held;
}

std::string RootLock::Refusal() const {
    return Folder + " is in use by " + HolderLine + "; one program at a time works on a root folder";
}

void RootLock::Release() {
    if (File.Valid())
        WriteLine(File.Number(), "");
    File.Close();
}

} // namespace platform::common
