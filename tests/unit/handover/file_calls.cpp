// SPDX-License-Identifier: MIT
#include "tests/unit/handover/file_calls.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace file_calls {

namespace {

struct Counting {
    bool On = false;
    Blow What = Blow::None;
    int Number = 0;
    int Count = 0;
};
Counting Now;

/// True if this call has to fail, with errno.
bool Fails() {
    if (!Now.On)
        return false;
    ++Now.Count;
    if (Now.What == Blow::None || Now.What == Blow::Spoilt || Now.Count < Now.Number)
        return false;
    if (Now.What == Blow::Kill)
        ::raise(SIGKILL);
    errno = Now.What == Blow::Full ? ENOSPC : EIO;
    return true;
}

bool Spoils() {
    return Now.On && Now.What == Blow::Spoilt;
}

template <class Call>
Call* Real(const char* name) {
    return reinterpret_cast<Call*>(::dlsym(RTLD_NEXT, name));
}

} // namespace

void Strike(Blow blow, int number) {
    Now = {true, blow, number, 0};
}

int Counted() {
    Now.On = false;
    return Now.Count;
}

} // namespace file_calls

extern "C" {

ssize_t pwrite(int file, const void* bytes, size_t count, off_t offset) {
    static auto* const real = file_calls::Real<ssize_t(int, const void*, size_t, off_t)>("pwrite");
    if (file_calls::Spoils())
        return real(file, std::string(count, '?').data(), count, offset);
    if (!file_calls::Fails())
        return real(file, bytes, count, offset);
    const int why = errno;
    real(file, bytes, count / 2, offset); // half of it was written
    errno = why;
    return -1;
}

int fsync(int file) {
    static auto* const real = file_calls::Real<int(int)>("fsync");
    return file_calls::Fails() ? -1 : real(file);
}

int renameat(int from, const char* name, int to, const char* other) noexcept {
    static auto* const real = file_calls::Real<int(int, const char*, int, const char*)>("renameat");
    return file_calls::Fails() ? -1 : real(from, name, to, other);
}

int mkdirat(int folder, const char* name, mode_t mode) noexcept {
    static auto* const real = file_calls::Real<int(int, const char*, mode_t)>("mkdirat");
    return file_calls::Fails() ? -1 : real(folder, name, mode);
}

int mkdir(const char* name, mode_t mode) noexcept {
    static auto* const real = file_calls::Real<int(const char*, mode_t)>("mkdir");
    return file_calls::Fails() ? -1 : real(name, mode);
}

int openat(int folder, const char* name, int flags, ...) {
    static auto* const real = file_calls::Real<int(int, const char*, int, ...)>("openat");
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return (flags & O_CREAT) != 0 && file_calls::Fails() ? -1 : real(folder, name, flags, mode);
}

} // extern "C"
