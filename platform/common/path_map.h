// SPDX-License-Identifier: MIT
// Where a path of the device lies on the host: beneath one root folder, whatever the path says.
#pragma once

#include "text/text.h"
#include "view/platform/errors.h"

#include <string>

namespace platform::common {

/// `Card:\x` is `Card/x` in the root, `c:\ipc\` is `c/ipc`. A path without a volume starts at the root itself, and so
/// do `.\` and a leading `\`. Names are taken as they are, with regard to case.
class PathMap {
public:
    /// Makes the root folder when it is missing. A root that can't be had fails every path with the same error.
    explicit PathMap(const std::string& rootFolder);

    /// The host path of a file or folder, which need not be there. Links on the way are followed; they may lead
    /// anywhere inside the root. PathRefused for a path that could mean something outside it:
    ///  - a part `..`, or `.` anywhere but as the first part;
    ///  - a part with `/`, a NUL, or a `:` that does not end the first part; a part that no host could name;
    ///  - a doubled `\`, and an empty path; one `\` at the end is no part;
    ///  - a link that leads outside the root, or to nothing.
    ErrorNumber HostPath(const Text& devicePath, std::string& hostPath) const;

    /// The same, but a link in the last part is not followed: the entry itself, for deleting it.
    ErrorNumber EntryPath(const Text& devicePath, std::string& hostPath) const;

private:
    enum class LastLink { Follow, Keep };
    ErrorNumber Map(const Text& devicePath, LastLink lastLink, std::string& hostPath) const;
    ErrorNumber FollowLink(std::string& path) const;
    bool Inside(const std::string& canonical) const;

    std::string Root; ///< canonical, without a trailing `/`: empty for the host's own root
    ErrorNumber RootError = NoError;
};

} // namespace platform::common
