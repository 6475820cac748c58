// SPDX-License-Identifier: MIT
#include "backends/grid/device_fonts.h"

#include <algorithm>
#include <cmath>

namespace backends {

namespace {

constexpr double ScreenPoint = 96.0 / 72.0;         // 96 pixels to the inch
constexpr double DesktopPoint = 1.25 * ScreenPoint; // the text size of other programs on a desktop
constexpr bool Narrow = true;                       // 160 pixels hold some 30 of its characters
constexpr bool Normal = false;

} // namespace

const std::vector<DeviceFont>& DeviceFonts() {
    static const std::vector<DeviceFont> fonts = {
        {u"AFPalm", Narrow, ScreenPoint},
        {u"AFPalmHR", Narrow, 2 * ScreenPoint}, // twice the pixels on a screen of twice the resolution
        {u"AFSE UIQ Standard", Normal, ScreenPoint},
        {u"Microsoft Sans Serif CMF", Normal, ScreenPoint},
        {u"Nokia Sans S60", Normal, ScreenPoint},
        {u"Tahoma", Normal, DesktopPoint},
    };
    return fonts;
}

const DeviceFont* DeviceFontNamed(const Text& name) {
    const auto& fonts = DeviceFonts();
    const auto found =
        std::find_if(fonts.begin(), fonts.end(), [&](const DeviceFont& font) { return font.Name == name; });
    return found == fonts.end() ? nullptr : &*found;
}

std::int32_t PixelsOfFont(const DeviceFont* font, std::int32_t points) {
    const double pixels = std::max(points, 1) * (font == nullptr ? ScreenPoint : font->PixelsPerPoint);
    return std::max(1, static_cast<std::int32_t>(std::lround(pixels)));
}

} // namespace backends
