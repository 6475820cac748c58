// SPDX-License-Identifier: MIT
// Sees a driver package that is put into a folder while "Add Driver" lists the packages.
#pragma once

#include "backends/loop/back_end.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace quorin {

class PackageWatch {
public:
    /// `root`: the root folder on the host.
    PackageWatch(backends::BackEnd& device, std::string root) : Device_(device), Root_(std::move(root)) {}

    /// While "Add Driver" is on the screen, looks at the folders at most once a second, and fills the screen again if
    /// its list is no longer true. Must be called at the outermost level of the loop.
    void Look();

private:
    /// When the names in a folder last changed, in the units of the host; 0 for a folder that is not there.
    using Stamps = std::vector<std::pair<std::string, std::int64_t>>;
    Stamps StampsOfFolders() const;

    backends::BackEnd& Device_;
    std::string Root_;
    Stamps Seen_; ///< empty while another screen is shown
    std::int64_t LookedAt_ = 0;
};

} // namespace quorin
