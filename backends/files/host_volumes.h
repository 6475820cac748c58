// SPDX-License-Identifier: MIT
// The volumes that a device shows, as they were given to the back-end.
#pragma once

#include "backends/files/path_map.h"
#include "src/view/platform/storage.h"

#include <optional>
#include <vector>

namespace backends {

using namespace platform;

struct HostVolume {
    Text Root;                             ///< with its trailing `\`
    std::optional<std::int64_t> Kilobytes; ///< none: asking for the space fails, as with a card that can't be read
};

class HostVolumes final : public Volumes {
public:
    HostVolumes(std::vector<HostVolume> volumes, PathMap paths) : List(std::move(volumes)), Paths(std::move(paths)) {}

    /// Makes the folders of the volumes that have none, but for one that the data has been kept on before: its folder
    /// is missing because it is out. To be called at the start of the program alone.
    void MakeFolders(const Text& keptOn) const;

    Text First() override;
    Text Next() override;
    /// In 32 bits, and so negative from 2 GB on, as devices have it. A volume that is not listed fails, and one whose
    /// folder is not there.
    ErrorNumber Space(const Text& root, std::int32_t& bytes) override;

private:
    std::vector<HostVolume> List;
    PathMap Paths;
    std::size_t NextVolume = 0;
};

} // namespace backends
