// SPDX-License-Identifier: MIT
// System calls of Linux that the C library for WebAssembly declares and does not have. Each fails as on a kernel
// without it; whoever calls one goes on, as it does there: file rights have no lists of access beside them, no signal
// comes.
#include <cerrno>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/xattr.h>

namespace {

int Fail(int error) {
    errno = error;
    return -1;
}

} // namespace

extern "C" {

int prctl(int, ...) {
    return Fail(ENOSYS);
}

int signalfd(int, const sigset_t*, int) {
    return Fail(ENOSYS);
}

ssize_t getxattr(const char*, const char*, void*, size_t) {
    return Fail(ENOTSUP);
}

int fsetxattr(int, const char*, const void*, size_t, int) {
    return Fail(ENOTSUP);
}

int fremovexattr(int, const char*) {
    return Fail(ENOTSUP);
}
}
