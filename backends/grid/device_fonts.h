// SPDX-License-Identifier: MIT
// The fonts of the devices on a screen that does not have them: how wide their letters are, and how large.
#pragma once

#include "src/text/text.h"

#include <cstdint>
#include <vector>

namespace backends {

/// A font of the devices.
struct DeviceFont {
    TextView Name;
    bool IsNarrow = false;
    double PixelsPerPoint = 0;
};

/// Returns all of them, in the order in which the application is told them.
const std::vector<DeviceFont>& DeviceFonts();
/// Returns the font of this name; null if it is none of them.
const DeviceFont* DeviceFontNamed(const Text& name);
/// Returns the size of a font's letters in pixels, at least 1. `points` below 1 count as 1.
std::int32_t PixelsOfFont(const DeviceFont* font, std::int32_t points);

} // namespace backends
