// SPDX-License-Identifier: MIT
// One program at a time works on a root folder: two that write the same tables would overwrite each other's records.
#pragma once

#include "backends/files/host_files.h"

#include <string>

namespace backends {

enum class LockResult {
    Held,      ///< held by this program until the lock is released or the program ends in any way
    Taken,     ///< another program has it
    NoFolder,  ///< the root folder does not exist or can't be opened
    Unguarded, ///< no lock is possible here: a second program is not kept out
};

/// Locks the folder itself, because a file in it can be removed or belong to another user. In addition it locks the
/// file `.quorin.lock`, which programs of an older version use and which names the holder of the lock. On a file system
/// without locks for folders only the file is locked.
class RootLock {
public:
    RootLock() = default;
    RootLock(const RootLock&) = delete;
    RootLock& operator=(const RootLock&) = delete;
    ~RootLock() { Release(); }

    /// Locks a root folder, which is created if it is missing, and writes the program's name and process id into the
    /// file. Releases the lock that was held before.
    LockResult Take(const std::string& rootFolder, const std::string& program);

    /// After `Taken`: the line that names the holder, such as "quorin 4711"; "another program" if the file names no
    /// running process.
    const std::string& Holder() const { return HolderLine_; }

    /// After `Taken` and `NoFolder`: why this program can't be started, for the user.
    std::string Refusal() const;
    /// After `Unguarded`: a warning for the user.
    std::string Warning() const;

    /// The file is emptied, not removed: otherwise a third program could lock a new file while a second one waits for
    /// the old one.
    void Release();

private:
    enum class Locked { Yes, ByAnother, No };

    LockResult TakeOpened(const std::string& program);
    Locked LockFile();
    void NameHolder();

    std::string Root_;
    Descriptor Folder_;
    Descriptor File_;
    bool OwnFile_ = false; ///< the file is writable
    std::string HolderLine_;
    std::string Error_; ///< reason why the folder can't be opened
};

} // namespace backends
