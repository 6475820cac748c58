// SPDX-License-Identifier: MIT
// Replaces the C library's file calls: everything that the program does to its files comes through here.
#include "tests/system/power_loss/disk_steps.h"

#include <array>
#include <cstdarg>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

// The library's calls. Each finds its original when it is first called, because some are called before main.

namespace {

mode_t ModeOf(int flags, va_list& rest) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
}

/// Returns where the next bytes of a file go.
off_t PlaceOfWrite(int file) {
    if ((::fcntl(file, F_GETFL) & O_APPEND) == 0)
        return ::lseek(file, 0, SEEK_CUR);
    static auto* const look = disk::Real<int(int, struct stat*)>("fstat"); // not counted: the program has not asked
    struct stat found {};
    return look(file, &found) == 0 ? found.st_size : 0;
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

/// Calls the original. Only openat2 is counted, because the library has no other routine for it.
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
    return disk::Write(file, bytes, count, disk::Watch::IsOn() ? PlaceOfWrite(file) : 0,
                       [&](size_t some) { return real(file, bytes, some); });
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

int fstatat(int folder, const char* path, struct stat* found, int flags) noexcept {
    static auto* const real = disk::Real<int(int, const char*, struct stat*, int)>("fstatat");
    return disk::LookFails(folder, path) ? -1 : real(folder, path, found, flags);
}

int stat(const char* path, struct stat* found) noexcept {
    static auto* const real = disk::Real<int(const char*, struct stat*)>("stat");
    return disk::LookFails(AT_FDCWD, path) ? -1 : real(path, found);
}

int fstat(int file, struct stat* found) noexcept {
    static auto* const real = disk::Real<int(int, struct stat*)>("fstat");
    return disk::LookFails(file) ? -1 : real(file, found);
}

int faccessat(int folder, const char* path, int mode, int flags) noexcept {
    static auto* const real = disk::Real<int(int, const char*, int, int)>("faccessat");
    return disk::LookFails(folder, path) ? -1 : real(folder, path, mode, flags);
}

int flock(int file, int operation) noexcept {
    static auto* const real = disk::Real<int(int, int)>("flock");
    return disk::LookFails(file) ? -1 : real(file, operation);
}

ssize_t readlinkat(int folder, const char* path, char* target, size_t room) noexcept {
    static auto* const real = disk::Real<ssize_t(int, const char*, char*, size_t)>("readlinkat");
    return disk::LookFails(folder, path) ? -1 : real(folder, path, target, room);
}

} // extern "C"
