// SPDX-License-Identifier: MIT
#include "backends/files/root_lock.h"

#include "backends/files/folder_names.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace backends {

namespace {

constexpr const char* LockName = ".quorin.lock";

/// Other members of a group may read who holds the lock.
constexpr mode_t ReadByAll = 0644;

/// How often a lock file may be removed by other programs before this one goes on without it.
constexpr int Tries = 10;

constexpr int OpenFlags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;

/// Returns the errno of locking; 0 on success.
int Lock(int file) {
    return Repeated([file] { return ::flock(file, LOCK_EX | LOCK_NB); }) == 0 ? 0 : errno;
}

bool IsRegular(int file) {
    struct stat found {};
    return Repeated([&] { return ::fstat(file, &found); }) == 0 && S_ISREG(found.st_mode);
}

bool IsStillIn(int folder, int file) {
    struct stat here {};
    struct stat there {};
    return Repeated([&] { return ::fstat(file, &here); }) == 0 &&
           Repeated([&] { return ::fstatat(folder, LockName, &there, AT_SYMLINK_NOFOLLOW); }) == 0 &&
           here.st_dev == there.st_dev && here.st_ino == there.st_ino;
}

Descriptor OpenFile(int folder, int flags) {
    Descriptor opened(Repeated([&] { return ::openat(folder, LockName, flags | OpenFlags, ReadByAll); }));
    return opened.Valid() && IsRegular(opened.Number()) ? std::move(opened) : Descriptor();
}

/// The line is information for the user. A full disk may have no space for it; the lock works without it.
void WriteLine(int file, const std::string& line) {
    const auto cut = [&] { return ::ftruncate(file, static_cast<off_t>(line.size())); };
    const bool written = WriteAll(file, line, 0) == NoError && Repeated(cut) == 0;
    static_cast<void>(written);
}

/// True if the process named by a line such as "quorin 4711" is running.
bool NamesLiving(const std::string& line) {
    const std::string digits = line.substr(line.rfind(' ') + 1);
    pid_t process = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), process);
    const bool isNumber = read.ec == std::errc() && read.ptr == digits.data() + digits.size() && process > 0;
    return isNumber && (::kill(process, 0) == 0 || errno == EPERM);
}

} // namespace

LockResult RootLock::Take(const std::string& rootFolder, const std::string& program) {
    Release();
    Root_ = rootFolder;
    HolderLine_.clear();
    MakeFolders(rootFolder); // if this fails, opening it fails too
    const ErrorNumber error = FoundAnew([&] {
        const auto open = [&] { return ::open(rootFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); };
        Folder_ = Descriptor(Repeated(open));
        return Folder_.Valid() ? NoError : FromErrno(errno);
    });
    if (error != NoError) {
        Error_ = ReasonOf(errno);
        return LockResult::NoFolder;
    }
    const LockResult result = TakeOpened(program);
    if (result == LockResult::Taken) {
        NameHolder();
        File_.Close();
        Folder_.Close();
    }
    return result;
}

LockResult RootLock::TakeOpened(const std::string& program) {
    const int error = Lock(Folder_.Number());
    if (error == EWOULDBLOCK)
        return LockResult::Taken;
    const Locked file = LockFile();
    if (file == Locked::ByAnother)
        return LockResult::Taken;
    if (OwnFile_)
        WriteLine(File_.Number(), program + " " + std::to_string(::getpid()) + "\n");
    return error == 0 || file == Locked::Yes ? LockResult::Held : LockResult::Unguarded;
}

RootLock::Locked RootLock::LockFile() {
    for (int attempt = 0; attempt < Tries; ++attempt) {
        File_ = OpenFile(Folder_.Number(), O_RDWR | O_CREAT);
        OwnFile_ = File_.Valid();
        if (!OwnFile_) // another user's file, a write-protected folder, or no file at all
            File_ = OpenFile(Folder_.Number(), O_RDONLY);
        const int error = File_.Valid() ? Lock(File_.Number()) : ENOLCK;
        if (error == EWOULDBLOCK)
            return Locked::ByAnother;
        if (error != 0)
            break;
        if (!IsStillIn(Folder_.Number(), File_.Number()))
            continue;
        if (OwnFile_)
            Repeated([this] { return ::fchmod(File_.Number(), ReadByAll); });
        // An unused file of another user can't hold this program's name. In a folder of a group it may be removable, so
        // that a writable one can be created.
        if (OwnFile_ || RemoveFrom(Folder_, LockName) != NoError)
            return Locked::Yes;
    }
    File_.Close();
    OwnFile_ = false;
    return Locked::No;
}

void RootLock::NameHolder() {
    const Descriptor file = OpenFile(Folder_.Number(), O_RDONLY);
    HolderLine_ = file.Valid() ? FirstLine("/proc/self/fd/" + std::to_string(file.Number())) : std::string();
    if (!NamesLiving(HolderLine_))
        HolderLine_ = "another program";
}

std::string RootLock::Refusal() const {
    if (HolderLine_.empty())
        return "can't open the root folder " + Root_ + ": " + Error_;
    return Root_ + " is in use by " + HolderLine_ + "; one program at a time works on a root folder";
}

std::string RootLock::Warning() const {
    return Root_ + " can't be locked: a second program could use it at the same time";
}

void RootLock::Release() {
    if (OwnFile_)
        WriteLine(File_.Number(), "");
    OwnFile_ = false;
    File_.Close();
    Folder_.Close();
}

} // namespace backends
