// SPDX-License-Identifier: MIT
#include "platform/headless/profile.h"

namespace platform::headless {

ScreenSize DefaultScreen(std::int32_t deviceType) {
    switch (deviceType) {
    case 0:
        return {640, 480};
    case 1:
        return {160, 160};
    default:
        return {240, 320};
    }
}

Text DefaultVolume(std::int32_t deviceType) {
    switch (deviceType) {
    case 0:
        return u".\\";
    case 1:
        return u"Device:\\";
    case 3:
    case 7:
        return u"\\";
    default:
        return u"C:\\";
    }
}

} // namespace platform::headless
