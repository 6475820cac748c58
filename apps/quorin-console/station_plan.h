// SPDX-License-Identifier: MIT
// What a station is asked to collect.
#pragma once

#include "src/text/text.h"

#include <cstdint>
#include <optional>
#include <string>

namespace console {

struct StationPlan {
    std::string Root; ///< root folder of the device
    Text Driver;
    bool Daily = false;               ///< each day has a download of its own
    std::optional<std::int32_t> Port = {}; ///< its number, as the command line has it; nothing if the settings say it
};

} // namespace console
