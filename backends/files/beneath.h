// SPDX-License-Identifier: MIT
// What lies beneath a folder of the host, and nothing beside it: the names come from packages, tables, settings and
// mailboxes, and somebody may have planted links.
#pragma once

#include "backends/files/host_files.h"

#include <string>

namespace backends {

// `relative` is a path of parts joined by `/`, without one at its start; empty for the folder itself. Links on the way
// are followed while they stay beneath the folder. PathRefused where one leads out of it even for a moment, begins with
// `/`, or goes round in circles; and for a path that is longer than the host can take.

/// Opens a folder as the start of further calls. FileNotFound where there is none.
ErrorNumber OpenFolderBeneath(int folder, const std::string& relative, Descriptor& found);

/// The same, part by part, which a kernel without openat2(2) needs: each part is opened without following it, and `..`
/// in a link goes back to the folder that we came from.
ErrorNumber WalkBeneath(int folder, const std::string& relative, Descriptor& found);

/// A link in the last part: taken for what it leads to, or as the entry that it is.
enum class LastLink { Follow, Keep };

/// The entry that a path means, which need not be there. PathRefused for a followed link that leads to nothing: making
/// a file under its name would make it where the link points.
ErrorNumber FindBeneath(int folder, const std::string& relative, LastLink lastLink, FileEntry& entry);

/// Makes a folder and those above it that are missing, for their owner alone. What it made is on the medium when it
/// returns.
ErrorNumber MakeFoldersBeneath(int folder, const std::string& relative);

} // namespace backends
