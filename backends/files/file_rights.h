// SPDX-License-Identifier: MIT
// Who may do what with a file: kept when the file is written anew.
#pragma once

#include <string>
#include <sys/types.h>

namespace backends {

struct FileRights {
    uid_t Owner = 0;
    gid_t Group = 0;
    mode_t Mode = 0;
    std::string AccessList; ///< the extended one, as the host keeps it; empty for none
};

// These give a value of errno, 0 for none.

/// The rights of what is there under a name in an open folder. Without set-user-ID and set-group-ID: what a file does
/// for another user must not be what somebody else has written.
int RightsOf(int folder, const std::string& name, FileRights& rights);

/// Gives a file that we have made the rights of another one. Where we may not give it that owner, its group and the
/// rest are given; where not the group or the access list either, `kept` is false, and nobody but the file's owner may
/// do more with it than with the other one.
int GiveRights(int file, const FileRights& rights, bool& kept);

} // namespace backends
