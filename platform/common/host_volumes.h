// SPDX-License-Identifier: MIT
// The volumes that a device shows, as they were given to the back-end.
#pragma once

#include "view/platform/storage.h"

#include <optional>
#include <vector>

namespace platform::common {

struct HostVolume {
    Text Root;                             ///< with its trailing `\`
    std::optional<std::int64_t> Kilobytes; ///< none: asking for the space fails, as with a card that can't be read
};

class HostVolumes final : public Volumes {
public:
    explicit HostVolumes(std::vector<HostVolume> volumes) : List(std::move(volumes)) {}

    Text First() override;
    Text Next() override;
    /// In 32 bits, and so negative from 2 GB on, as devices have it. A volume that is not listed fails.
    ErrorNumber Space(const Text& root, std::int32_t& bytes) override;

private:
    std::vector<HostVolume> List;
    std::size_t NextVolume = 0;
};

} // namespace platform::common
