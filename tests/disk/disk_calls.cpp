// SPDX-License-Identifier: MIT
#include "tests/disk/disk_calls.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <optional>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace disk {

namespace {

using FileKey = std::pair<dev_t, ino_t>;

struct Watching {
    bool On = false;
    std::string Root;
    Plan Planned;
    std::vector<Call> Kinds;
    int Reads = 0;
    bool Struck = false;
    bool WriteFails = false; ///< what comes behind a short write
    std::vector<Step> Taken;
    Start Began;
    std::map<FileKey, std::uint64_t> Numbers;
    std::uint64_t LastNumber = 0;
};
Watching Now;

/// The library's own routine of that name.
template <class Routine>
Routine* Real(const char* name) {
    return reinterpret_cast<Routine*>(::dlsym(RTLD_NEXT, name));
}

std::string LinkTarget(const std::string& link) {
    std::array<char, 4096> target;
    const ssize_t length = ::readlink(link.c_str(), target.data(), target.size());
    return length > 0 ? std::string(target.data(), static_cast<std::size_t>(length)) : std::string();
}

std::string PathOf(int file) {
    return LinkTarget("/proc/self/fd/" + std::to_string(file));
}

/// What lies under the root, relative to it; nothing for any other path.
std::optional<std::string> Inside(const std::string& path) {
    if (path == Now.Root)
        return std::string();
    if (path.size() <= Now.Root.size() || path.compare(0, Now.Root.size(), Now.Root) != 0 ||
        path[Now.Root.size()] != '/')
        return std::nullopt;
    return path.substr(Now.Root.size() + 1);
}

std::optional<std::string> Inside(int folder, const char* path) {
    if (!Now.On)
        return std::nullopt;
    std::string whole = path;
    if (whole.empty() || whole.front() != '/')
        whole = (folder == AT_FDCWD ? LinkTarget("/proc/self/cwd") : PathOf(folder)) + "/" + whole;
    while (whole.size() > 2 && whole.compare(whole.size() - 2, 2, "/.") == 0)
        whole.resize(whole.size() - 2);
    return Inside(whole);
}

std::optional<std::string> Inside(int file) {
    return Now.On ? Inside(PathOf(file)) : std::nullopt;
}

std::uint64_t NumberOf(const struct stat& found) {
    std::uint64_t& number = Now.Numbers[{found.st_dev, found.st_ino}];
    if (number == 0)
        number = ++Now.LastNumber;
    return number;
}

std::uint64_t NumberOf(int file) {
    struct stat found {};
    return ::fstat(file, &found) == 0 ? NumberOf(found) : 0;
}

std::uint64_t NumberOf(const std::string& path) {
    struct stat found {};
    return ::lstat((Now.Root + "/" + path).c_str(), &found) == 0 ? NumberOf(found) : 0;
}

/// The disk may give the place of a deleted file to a new one.
std::uint64_t NewNumberOf(int file) {
    struct stat found {};
    if (::fstat(file, &found) != 0)
        return 0;
    return Now.Numbers[{found.st_dev, found.st_ino}] = ++Now.LastNumber;
}

[[noreturn]] void Die() {
    ::kill(::getpid(), SIGKILL);
    for (;;)
        ::pause();
}

/// One step, from its beginning to its end.
class Attempt {
public:
    /// Whether it takes up room on the disk matters to a full one.
    Attempt(Call kind, bool takesRoom) {
        Now.Kinds.push_back(kind);
        const int number = Watch::Steps();
        const Plan& plan = Now.Planned;
        if (plan.Reading || plan.What == Blow::None)
            return;
        if (number == plan.At || (plan.What == Blow::FullFromHere && number > plan.At && takesRoom)) {
            Now.Struck = true;
            Hit = plan.What;
        }
        if (Hit == Blow::KillBefore)
            Die();
    }

    bool Fails(bool takesRoom) const {
        if (Hit != Blow::Fail && !(Hit == Blow::FullFromHere && takesRoom))
            return false;
        errno = Now.Planned.Error;
        return true;
    }
    bool IsHalved() const { return Hit == Blow::ShortWrite || Hit == Blow::KillInside; }
    bool WasShort() const { return Hit == Blow::ShortWrite; }

    void Succeeded(Step step) const {
        const int kept = errno;
        Now.Taken.push_back(std::move(step));
        if (Hit == Blow::KillInside || Hit == Blow::KillAfter)
            Die();
        errno = kept;
    }
    void Ended() const {
        if (Hit == Blow::KillInside || Hit == Blow::KillAfter)
            Die();
    }

private:
    Blow Hit = Blow::None;
};

bool ReadFails() {
    ++Now.Reads;
    const Plan& plan = Now.Planned;
    if (!plan.Reading || plan.What != Blow::Fail || Now.Reads != plan.At)
        return false;
    Now.Struck = true;
    errno = plan.Error;
    return true;
}

template <class Forward>
int Open(int folder, const char* path, int flags, Forward forward) {
    const auto inside = Inside(folder, path);
    if (!inside || (flags & O_PATH) != 0) // a folder as the start of further calls: nothing of it is read yet
        return forward();
    const bool writes = (flags & O_ACCMODE) != O_RDONLY || (flags & (O_CREAT | O_TRUNC)) != 0;
    if (!writes)
        return ReadFails() ? -1 : forward();
    struct stat found {};
    const bool isThere = ::lstat((Now.Root + "/" + *inside).c_str(), &found) == 0;
    const bool makes = (flags & O_CREAT) != 0 && !isThere;
    const Attempt attempt(Call::Open, makes);
    if (attempt.Fails(makes))
        return -1;
    const int file = forward();
    if (file < 0) {
        attempt.Ended();
        return file;
    }
    Step step;
    step.Path = *inside;
    step.Made = makes;
    step.MadeEmpty = !makes && (flags & O_TRUNC) != 0;
    step.File = makes ? NewNumberOf(file) : NumberOf(file);
    attempt.Succeeded(std::move(step));
    return file;
}

template <class Forward>
ssize_t Write(int file, const void* bytes, std::size_t count, std::int64_t offset, Forward forward) {
    const auto inside = Inside(file);
    if (!inside)
        return forward(count);
    if (Now.WriteFails) {
        Now.WriteFails = false;
        errno = ENOSPC;
        return -1;
    }
    const Attempt attempt(Call::Write, true);
    if (attempt.Fails(true))
        return -1;
    const std::size_t wanted = attempt.IsHalved() ? count / 2 : count;
    const ssize_t written = wanted > 0 ? forward(wanted) : 0;
    if (written < 0) {
        attempt.Ended();
        return written;
    }
    Now.WriteFails = attempt.WasShort();
    Step step;
    step.What = Call::Write;
    step.Path = *inside;
    step.File = NumberOf(file);
    step.Offset = offset;
    step.Bytes.assign(static_cast<const char*>(bytes), static_cast<std::size_t>(written));
    attempt.Succeeded(std::move(step));
    if (written == 0 && attempt.WasShort()) {
        Now.WriteFails = false;
        errno = ENOSPC;
        return -1;
    }
    return written;
}

template <class Forward>
ssize_t Read(int file, Forward forward) {
    return Inside(file) && ReadFails() ? -1 : forward();
}

/// Any other step: what it did is known once it has been done.
template <class Forward>
int Other(Step step, bool takesRoom, Forward forward) {
    const Attempt attempt(step.What, takesRoom);
    if (attempt.Fails(takesRoom))
        return -1;
    const int result = forward();
    if (result == 0)
        attempt.Succeeded(std::move(step));
    else
        attempt.Ended();
    return result;
}

template <class Forward>
int Truncate(int file, std::int64_t size, Forward forward) {
    const auto inside = Inside(file);
    if (!inside)
        return forward();
    Step step;
    step.What = Call::Truncate;
    step.Path = *inside;
    step.File = NumberOf(file);
    step.Offset = size;
    return Other(std::move(step), false, forward);
}

template <class Forward>
int Sync(int file, Forward forward) {
    const auto inside = Inside(file);
    if (!inside)
        return forward();
    struct stat found {};
    ::fstat(file, &found);
    Step step;
    step.What = S_ISDIR(found.st_mode) ? Call::SyncFolder : Call::Sync;
    step.Path = *inside;
    step.File = NumberOf(found);
    return Other(std::move(step), false, [] { return 0; });
}

template <class Forward>
int Rename(int fromFolder, const char* from, int toFolder, const char* to, Forward forward) {
    const auto source = Inside(fromFolder, from);
    const auto target = Inside(toFolder, to);
    if (!source || !target)
        return forward();
    Step step;
    step.What = Call::Rename;
    step.Path = *source;
    step.To = *target;
    step.File = NumberOf(*source);
    return Other(std::move(step), false, forward);
}

template <class Forward>
int Unlink(int folder, const char* path, Forward forward) {
    const auto inside = Inside(folder, path);
    if (!inside)
        return forward();
    Step step;
    step.What = Call::Unlink;
    step.Path = *inside;
    step.File = NumberOf(*inside);
    return Other(std::move(step), false, forward);
}

template <class Forward>
int MakeFolder(int folder, const char* path, Forward forward) {
    const auto inside = Inside(folder, path);
    if (!inside)
        return forward();
    Step step;
    step.What = Call::MakeFolder;
    step.Path = *inside;
    return Other(std::move(step), true, forward);
}

} // namespace

Watch::Watch(const std::string& root, const Plan& plan) {
    Now = {};
    Now.Root = root;
    Now.Planned = plan;
    Now.Began.Held = ReadTree(root);
    for (const auto& [path, bytes] : Now.Began.Held.Files)
        Now.Began.Numbers[path] = NumberOf(path);
    Now.On = true;
}

Watch::~Watch() {
    Now.On = false;
}

int Watch::Steps() {
    return static_cast<int>(Now.Kinds.size());
}

int Watch::Reads() {
    return Now.Reads;
}

bool Watch::Struck() {
    return Now.Struck;
}

const std::vector<Call>& Watch::Kinds() {
    return Now.Kinds;
}

const std::vector<Step>& Watch::StepsTaken() {
    return Now.Taken;
}

const Start& Watch::Began() {
    return Now.Began;
}

} // namespace disk

// The library's calls. Each looks its real one up once it is called, since some are called before main is.

namespace {

mode_t ModeOf(int flags, va_list& rest) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
}

} // namespace

#define QUORIN_MODE(flags)                                                                                             \
    va_list rest;                                                                                                      \
    va_start(rest, flags);                                                                                             \
    const mode_t mode = ModeOf(flags, rest);                                                                           \
    va_end(rest)

extern "C" {

int open(const char* path, int flags, ...) {
    QUORIN_MODE(flags);
    static auto* const real = disk::Real<int(const char*, int, ...)>("open");
    return disk::Open(AT_FDCWD, path, flags, [&] { return real(path, flags, mode); });
}

int open64(const char* path, int flags, ...) {
    QUORIN_MODE(flags);
    static auto* const real = disk::Real<int(const char*, int, ...)>("open64");
    return disk::Open(AT_FDCWD, path, flags, [&] { return real(path, flags, mode); });
}

int openat(int folder, const char* path, int flags, ...) {
    QUORIN_MODE(flags);
    static auto* const real = disk::Real<int(int, const char*, int, ...)>("openat");
    return disk::Open(folder, path, flags, [&] { return real(folder, path, flags, mode); });
}

int openat64(int folder, const char* path, int flags, ...) {
    QUORIN_MODE(flags);
    static auto* const real = disk::Real<int(int, const char*, int, ...)>("openat64");
    return disk::Open(folder, path, flags, [&] { return real(folder, path, flags, mode); });
}

/// Passes everything on; openat2 alone is looked at, which the library has no routine for.
long syscall(long number, ...) noexcept {
    std::array<long, 6> a{};
    va_list rest;
    va_start(rest, number);
    for (long& argument : a)
        argument = va_arg(rest, long);
    va_end(rest);
    static auto* const real = disk::Real<long(long, ...)>("syscall");
    const auto forward = [&] { return real(number, a[0], a[1], a[2], a[3], a[4], a[5]); };
    if (number != SYS_openat2)
        return forward();
    const auto* how = reinterpret_cast<const open_how*>(a[2]);
    return disk::Open(static_cast<int>(a[0]), reinterpret_cast<const char*>(a[1]), static_cast<int>(how->flags),
                      [&] { return static_cast<int>(forward()); });
}

ssize_t write(int file, const void* bytes, size_t count) {
    static auto* const real = disk::Real<ssize_t(int, const void*, size_t)>("write");
    const off_t offset = disk::Now.On ? ::lseek(file, 0, SEEK_CUR) : 0;
    return disk::Write(file, bytes, count, offset, [&](size_t some) { return real(file, bytes, some); });
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t offset) {
    static auto* const real = disk::Real<ssize_t(int, const void*, size_t, off_t)>("pwrite");
    return disk::Write(file, bytes, count, offset, [&](size_t some) { return real(file, bytes, some, offset); });
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t offset) {
    static auto* const real = disk::Real<ssize_t(int, const void*, size_t, off64_t)>("pwrite64");
    return disk::Write(file, bytes, count, offset, [&](size_t some) { return real(file, bytes, some, offset); });
}

ssize_t read(int file, void* bytes, size_t count) {
    static auto* const real = disk::Real<ssize_t(int, void*, size_t)>("read");
    return disk::Read(file, [&] { return real(file, bytes, count); });
}

ssize_t pread(int file, void* bytes, size_t count, off_t offset) {
    static auto* const real = disk::Real<ssize_t(int, void*, size_t, off_t)>("pread");
    return disk::Read(file, [&] { return real(file, bytes, count, offset); });
}

ssize_t pread64(int file, void* bytes, size_t count, off64_t offset) {
    static auto* const real = disk::Real<ssize_t(int, void*, size_t, off64_t)>("pread64");
    return disk::Read(file, [&] { return real(file, bytes, count, offset); });
}

int ftruncate(int file, off_t size) noexcept {
    static auto* const real = disk::Real<int(int, off_t)>("ftruncate");
    return disk::Truncate(file, size, [&] { return real(file, size); });
}

int ftruncate64(int file, off64_t size) noexcept {
    static auto* const real = disk::Real<int(int, off64_t)>("ftruncate64");
    return disk::Truncate(file, size, [&] { return real(file, size); });
}

int fsync(int file) {
    static auto* const real = disk::Real<int(int)>("fsync");
    return disk::Sync(file, [&] { return real(file); });
}

int fdatasync(int file) {
    static auto* const real = disk::Real<int(int)>("fdatasync");
    return disk::Sync(file, [&] { return real(file); });
}

int rename(const char* from, const char* to) noexcept {
    static auto* const real = disk::Real<int(const char*, const char*)>("rename");
    return disk::Rename(AT_FDCWD, from, AT_FDCWD, to, [&] { return real(from, to); });
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
    static auto* const real = disk::Real<int(int, const char*, int, const char*)>("renameat");
    return disk::Rename(fromFolder, from, toFolder, to, [&] { return real(fromFolder, from, toFolder, to); });
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
    static auto* const real = disk::Real<int(int, const char*, int, const char*, unsigned)>("renameat2");
    return disk::Rename(fromFolder, from, toFolder, to, [&] { return real(fromFolder, from, toFolder, to, flags); });
}

int unlink(const char* path) noexcept {
    static auto* const real = disk::Real<int(const char*)>("unlink");
    return disk::Unlink(AT_FDCWD, path, [&] { return real(path); });
}

int unlinkat(int folder, const char* path, int flags) noexcept {
    static auto* const real = disk::Real<int(int, const char*, int)>("unlinkat");
    return disk::Unlink(folder, path, [&] { return real(folder, path, flags); });
}

int mkdir(const char* path, mode_t mode) noexcept {
    static auto* const real = disk::Real<int(const char*, mode_t)>("mkdir");
    return disk::MakeFolder(AT_FDCWD, path, [&] { return real(path, mode); });
}

int mkdirat(int folder, const char* path, mode_t mode) noexcept {
    static auto* const real = disk::Real<int(int, const char*, mode_t)>("mkdirat");
    return disk::MakeFolder(folder, path, [&] { return real(folder, path, mode); });
}

} // extern "C"
