// SPDX-License-Identifier: MIT
// The volumes of a device, as the back-end was given them.
#pragma once

#include "backends/files/path_map.h"
#include "src/view/platform/storage.h"

#include <optional>
#include <vector>

namespace backends {

using namespace platform;

struct HostVolume {
    Text Root; ///< with its trailing `\`
    /// If it is not set, asking for the space fails, as with a card that can't be read.
    std::optional<std::int64_t> Kilobytes;
};

class HostVolumes final : public Volumes {
public:
    HostVolumes(std::vector<HostVolume> volumes, PathMap paths) : List_(std::move(volumes)), Paths_(std::move(paths)) {}

    /// Creates the missing folders of the volumes, except for the one that has held the data so far: if its folder is
    /// missing, the card is out. Call this only at the start of the program.
    void MakeFolders(const Text& keptOn) const;

    Text First() override;
    Text Next() override;
    /// Returns the space in bytes as a signed 32-bit number, as on the devices: it is negative from 2 GB on. Fails for
    /// a volume that is not listed or whose folder does not exist.
    ErrorNumber Space(const Text& root, std::int32_t& bytes) override;

private:
    std::vector<HostVolume> List_;
    PathMap Paths_;
    std::size_t NextVolume_ = 0;
};

} // namespace backends
