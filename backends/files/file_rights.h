// SPDX-License-Identifier: MIT
// The access rights of a file, which are kept when the file is rewritten.
#pragma once

#include <string>
#include <sys/types.h>

namespace backends {

struct FileRights {
    uid_t Owner = 0;
    gid_t Group = 0;
    mode_t Mode = 0;
    std::string AccessList; ///< extended access list in the host's form; empty for none
};

// These return a value of errno, 0 on success.

/// Reads the rights of an entry in an open folder, without set-user-ID and set-group-ID: a program that runs as its
/// owner must not get content that another user wrote.
int RightsOf(int folder, const std::string& name, FileRights& rights);

/// Gives a file that this program has created the rights of another file. If the owner can't be set, the group and the
/// rest still are. If the group or the access list can't be set either, `kept` is false, and only the owner of the new
/// file may have more access to it than to the other one.
int GiveRights(int file, const FileRights& rights, bool& kept);

} // namespace backends
