// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace exporter {

/// A hidden folder for what is made before an output is, on the disk of that output. Removed with all that is in it.
class ScratchFolder {
public:
    ScratchFolder() = default;
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder();

    /// Makes it beside the file `output`; for standard output, whose path is empty, in $TMPDIR or /var/tmp, where there
    /// is more room than in a /tmp in memory. Returns why that is not possible, or an empty text.
    std::string Make(const std::string& output);
    const std::string& Path() const { return Path_; }

private:
    std::string Path_; ///< empty until it is there
};

} // namespace exporter
