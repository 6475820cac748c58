// SPDX-License-Identifier: MIT
// What library_calls.cpp does in place of the C library: each routine counts the call, then fails, kills the program or
// calls the library's own routine, as the plan says.
#pragma once

#include "tests/system/power_loss/disk_calls.h"

#include <dlfcn.h>
#include <functional>
#include <sys/types.h>

namespace disk {

using Forward = std::function<int()>;

/// Returns the library's own routine of that name.
template <class Routine>
Routine* Real(const char* name) {
    return reinterpret_cast<Routine*>(::dlsym(RTLD_NEXT, name));
}

/// Counts a look, a call that asks what there is. Returns true if it must fail, with errno set.
bool LookFails(int folder, const char* path);
bool LookFails(int file);

int Open(int folder, const char* path, int flags, const Forward& forward);
ssize_t Write(int file, const void* bytes, std::size_t count, std::int64_t offset,
              const std::function<ssize_t(std::size_t)>& forward);
ssize_t Read(int file, const std::function<ssize_t()>& forward);
int Truncate(int file, std::int64_t size, const Forward& forward);
int Sync(int file, const Forward& forward);
int Rename(int fromFolder, const char* from, int toFolder, const char* to, const Forward& forward);
int Unlink(int folder, const char* path, const Forward& forward);
int MakeFolder(int folder, const char* path, const Forward& forward);

} // namespace disk
