// SPDX-License-Identifier: MIT
// What a device of each type reports when nothing else is said.
#pragma once

#include "platform/common/host_volumes.h"
#include "text/text.h"

#include <string>
#include <vector>

namespace platform::headless {

struct ScreenSize {
    std::int32_t Width = 0; ///< pixels
    std::int32_t Height = 0;
};

ScreenSize DefaultScreen(std::int32_t deviceType);

/// The root of the one volume that such a device has.
Text DefaultVolume(std::int32_t deviceType);

/// Its space in kilobytes.
inline constexpr std::int32_t DefaultVolumeKB = 65536;

} // namespace platform::headless
