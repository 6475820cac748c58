// SPDX-License-Identifier: MIT
#include "view/platform/platform.h"

#include <cstdlib>

namespace platform {

namespace {
Platform* installed = nullptr;
}

void Install(Platform* platform) {
    installed = platform;
}

Platform& Device() {
    return *installed;
}

void RuntimeFailure(const Text& text) {
    Device().runTime.RuntimeFailure(text);
    std::abort(); // a back-end that comes back has broken its word
}

} // namespace platform
