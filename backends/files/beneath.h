// SPDX-License-Identifier: MIT
// Access to the contents of one folder of the host and to nothing outside of it: names come from packages, tables,
// settings and mailboxes, and links may have been planted.
#pragma once

#include "backends/files/host_files.h"

#include <string>

namespace backends {

// `relative` is a path of parts joined by `/`, without a leading one; empty for the folder itself. Links on the way are
// followed while they stay beneath the folder. PathRefused if one leads out of it at any point, begins with `/`, or is
// part of a loop; and if the path is longer than the host allows.

/// Opens a folder to be used in further calls. FileNotFound if there is none.
ErrorNumber OpenFolderBeneath(int folder, const std::string& relative, Descriptor& found);

/// The same, part by part, for a kernel without openat2(2): each part is opened without following links, and `..` in a
/// link returns to the folder opened before.
ErrorNumber WalkBeneath(int folder, const std::string& relative, Descriptor& found);

/// What a link in the last part means: the entry that it leads to, or the link itself.
enum class LastLink { Follow, Keep };

/// Finds the entry that a path means, which need not exist. PathRefused for a dangling link that would be followed:
/// creating a file under its name would create it where the link points.
ErrorNumber FindBeneath(int folder, const std::string& relative, LastLink lastLink, FileEntry& entry);

/// Creates a folder and its missing parents, accessible to their owner alone. On success all of them are on the medium.
ErrorNumber MakeFoldersBeneath(int folder, const std::string& relative);

} // namespace backends
