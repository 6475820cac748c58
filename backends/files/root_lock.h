// SPDX-License-Identifier: MIT
// One program a root folder: two that write the same tables would undo each other's records.
#pragma once

#include "backends/files/host_files.h"

#include <string>

namespace backends {

enum class LockResult {
    Held,      ///< it is this program's until the lock is released or the program ends, however it ends
    Taken,     ///< another program has it
    NoFolder,  ///< there is no root folder, or it can't be opened
    Unguarded, ///< there is no lock to be had here: nobody keeps a second program away
};

/// What is locked is the folder itself, for a file in it can be removed, or be another user's; and beside it the file
/// `.quorin.lock`, which programs of an older version go by, and which tells who holds the lock. A folder that is on a
/// file system without locks for folders is guarded by the file alone.
class RootLock {
public:
    RootLock() = default;
    RootLock(const RootLock&) = delete;
    RootLock& operator=(const RootLock&) = delete;
    ~RootLock() { Release(); }

    /// Takes the lock of a root folder, which is made when it is missing, and writes the program's name and process id
    /// into the file. What was held before is released.
    LockResult Take(const std::string& rootFolder, const std::string& program);

    /// After `Taken`: the line of who holds it, such as "quorin 4711"; "another program" where the file names none that
    /// is alive.
    const std::string& Holder() const { return HolderLine; }

    /// After `Taken` and `NoFolder`: why a person can't start this program.
    std::string Refusal() const;
    /// After `Unguarded`: what a person has to know.
    std::string Warning() const;

    /// The file stays, empty: removing it would let a third program lock a new one while a second waits for the old.
    void Release();

private:
    enum class Locked { Yes, ByAnother, No };

    LockResult TakeOpened(const std::string& program);
    Locked LockFile();
    void NameHolder();

    std::string Root;
    Descriptor Folder;
    Descriptor File;
    bool OwnFile = false; ///< the file can be written
    std::string HolderLine;
    std::string Why; ///< the folder can't be opened
};

} // namespace backends
