// SPDX-License-Identifier: MIT
// Folders of what the program keeps of its runs: the drafts and the journal.
#pragma once

#include "backends/files/host_files.h"

namespace backends {

/// Permissions of users who are not the owner.
inline constexpr unsigned OthersUse = S_IRWXG | S_IRWXO;
inline constexpr unsigned OthersWrite = S_IWGRP | S_IWOTH;

/// Creates a folder if it is missing, accessible to its owner alone, and opens it. Refuses a folder that is a link,
/// that is another user's, or in which others have one of the permissions in `forbidden`. Returns why it could not,
/// such as "it is a link: PATH", the path last because it may be cut; empty on success.
Text OpenPrivateFolder(const std::string& path, unsigned forbidden, Descriptor& folder);

} // namespace backends
