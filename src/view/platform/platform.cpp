// SPDX-License-Identifier: MIT
#include "src/view/platform/platform.h"

#include <cstdlib>

namespace platform {

namespace {

Platform* installed = nullptr;

/// Sets Stop.Failure while BeforeFailure runs, which may not return.
struct Stopping {
    explicit Stopping(const Text& failure) { Stop.Failure = &failure; }
    ~Stopping() { Stop.Failure = nullptr; }
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
    if (Stop.Failure != nullptr)
        Device().runTime.RuntimeFailure(*Stop.Failure + u". The record on the screen could not be saved: " + text);
    if (Stop.BeforeFailure != nullptr) {
        const Stopping stopping(text);
        Stop.BeforeFailure();
    }
    Device().runTime.RuntimeFailure(text);
    std::abort(); // the back-end's routine must not return
}

} // namespace platform
