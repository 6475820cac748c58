// SPDX-License-Identifier: MIT
// Where a path of the device lies on the host: beneath one root folder, whatever the path says.
#pragma once

#include "backends/files/beneath.h"
#include "src/text/text.h"

#include <string>

namespace backends {

/// `Card:\x` is `Card/x` in the root, `c:\ipc\` is `c/ipc`; `.\` and a path that begins with `\` start at the root
/// itself. Names are taken as they are, with regard to case. PathRefused for a path that names nothing, as it has
/// neither a volume nor a `\` in front, and for one that could mean something outside the root:
///  - a part `..`, or `.` anywhere but as the first part;
///  - a part with `/`, a NUL, or a `:` that does not end the first part; a part that no host could name;
///  - a doubled `\`, and an empty path; one `\` at the end is no part.
/// The host path has no `/` at its start, and is empty for the root itself.
ErrorNumber RelativePath(const Text& devicePath, std::string& relative);

/// Opens what the paths mean beneath the root, which is opened anew each time: a card that was out and is in again
/// serves on, and what failed once is tried again the next time. Links on the way and in the last part are followed
/// while they stay beneath the root; PathRefused for any that leads out, that begins with `/`, or that leads to
/// nothing.
class PathMap {
public:
    /// Makes the root folder when it is missing.
    explicit PathMap(const std::string& rootFolder);

    /// The entry of a file or folder, which need not be there.
    ErrorNumber Entry(const Text& devicePath, LastLink lastLink, FileEntry& entry) const;

    /// Opens a folder as the start of further calls. FileNotFound where there is none.
    ErrorNumber OpenFolder(const Text& devicePath, Descriptor& folder) const;

    /// Makes a folder that is missing, and those above it. FileNotFound where the volume has no folder: a card that is
    /// out must not be taken for one that is empty.
    ErrorNumber MakeFolder(const Text& devicePath) const;
    /// Makes the folder of a volume, for the start of the program.
    ErrorNumber MakeVolume(const Text& volume) const;

private:
    ErrorNumber OpenRoot(Descriptor& root) const;
    template <class Step>
    ErrorNumber LookUp(const Text& devicePath, Step step) const;

    std::string Named;     ///< as it was given
    std::string Canonical; ///< without links; empty where that could not be found out at the start
};

} // namespace backends
