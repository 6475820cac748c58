// SPDX-License-Identifier: MIT
// Maps a path of the device to the host: always beneath one root folder.
#pragma once

#include "backends/files/beneath.h"
#include "src/text/text.h"

#include <string>

namespace backends {

/// `Card:\x` is `Card/x` in the root, `c:\ipc\` is `c/ipc`; `.\` and a path that begins with `\` start at the root
/// itself. Names are used unchanged and are case-sensitive. PathRefused for a path that begins with neither a volume
/// nor a `\` nor `.\`, and for one that could mean something outside the root:
///  - a part `..`, or `.` anywhere but as the first part;
///  - a part with `/`, a NUL, or a `:` that does not end the first part; a part that no host allows;
///  - a doubled `\`, and an empty path; one `\` at the end is ignored.
/// The host path has no leading `/`, and is empty for the root itself.
ErrorNumber RelativePath(const Text& devicePath, std::string& relative);

/// Opens entries beneath the root. The root is reopened each time: a card that was removed and inserted again works
/// again, and what has failed is tried again the next time. Links on the way and in the last part are followed while
/// they stay beneath the root; PathRefused for a link that leads out, begins with `/`, or is dangling.
class PathMap {
public:
    /// Creates the root folder if it is missing.
    explicit PathMap(const std::string& rootFolder);

    /// Finds the entry of a file or folder, which need not exist.
    ErrorNumber Entry(const Text& devicePath, LastLink lastLink, FileEntry& entry) const;

    /// Opens a folder to be used in further calls. FileNotFound if there is none.
    ErrorNumber OpenFolder(const Text& devicePath, Descriptor& folder) const;

    /// Creates a missing folder and its missing parents. FileNotFound if the volume has no folder: a removed card must
    /// not be taken for an empty one.
    ErrorNumber MakeFolder(const Text& devicePath) const;
    /// Creates the folder of a volume, at the start of the program.
    ErrorNumber MakeVolume(const Text& volume) const;

private:
    ErrorNumber OpenRoot(Descriptor& root) const;
    template <class Step>
    ErrorNumber LookUp(const Text& devicePath, Step step) const;

    std::string Named_;     ///< as given by the caller
    std::string Canonical_; ///< without links; empty if that could not be determined at the start
};

} // namespace backends
