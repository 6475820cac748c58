// SPDX-License-Identifier: MIT
#include "src/view/platform/platform.h"

#include <cstdlib>

namespace platform {

namespace {

Platform* installed = nullptr;
const Text* stoppingFor = nullptr; // the failure for which BeforeFailure runs

/// For as long as BeforeFailure runs, which may not come back.
struct Stopping {
    explicit Stopping(const Text& failure) { stoppingFor = &failure; }
    ~Stopping() { stoppingFor = nullptr; }
    Stopping(const Stopping&) = delete;
    Stopping& operator=(const Stopping&) = delete;
};

} // namespace

void Install(Platform* platform) {
    installed = platform;
}

Platform& Device() {
    return *installed;
}

void RuntimeFailure(const Text& text) {
    if (stoppingFor != nullptr)
        Device().runTime.RuntimeFailure(*stoppingFor + u". The record on the screen could not be saved: " + text);
    if (BeforeFailure != nullptr) {
        const Stopping stopping(text);
        BeforeFailure();
    }
    Device().runTime.RuntimeFailure(text);
    std::abort(); // a back-end that comes back has broken its word
}

} // namespace platform
