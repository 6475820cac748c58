// SPDX-License-Identifier: MIT
// One program a root folder: two that write the same tables would undo each other's records.
#pragma once

#include "platform/common/host_files.h"

#include <string>

namespace platform::common {

enum class LockResult {
    Held,        ///< it is this program's until the lock is released or the program ends, however it ends
    Taken,       ///< another program has it
    NotLockable, ///< there is no lock to be had here: a read-only or full disk, a file system without locks
};

class RootLock {
public:
    RootLock() = default;
    RootLock(const RootLock&) = delete;
    RootLock& operator=(const RootLock&) = delete;
    ~RootLock() { Release(); }

    /// Takes the lock of a root folder, which is made when it is missing, and writes the program's name and process id
    /// into it. What was held before is released.
    LockResult Take(const std::string& rootFolder, const std::string& program);

    /// After `Taken`: the line of who holds it, such as "quorin 4711"; "another program" when that can't be read.
    const std::string& Holder() const { return HolderLine; }

    /// After `Taken`: what a person is told who wants to start a second program.
    std::string Refusal() const;

    /// The file stays, empty: removing it would let a third program lock a new one while a second waits for the old.
    void Release();

private:
    LockResult TakeOpened(Descriptor opened, const std::string& path);

    std::string Folder;
    Descriptor File;
    std::string HolderLine;
};

} // namespace platform::common
