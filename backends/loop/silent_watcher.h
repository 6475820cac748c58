// SPDX-License-Identifier: MIT
// A Watcher that does nothing: a base class for those that override some of it.
#pragma once

#include "backends/loop/services.h"

namespace backends {

class SilentWatcher : public Watcher {
public:
    void BoxOpened(const Text&, BoxButtons, BoxIcon, const Text&) override {}
    void TonePlayed(std::int32_t, std::int32_t) override {}
    void StatusShown(const Text&) override {}
    void StatusHidden() override {}
    void KeyGrabbed(std::int32_t) override {}
    void KeyReleased(std::int32_t) override {}
    void CharacterSent(std::int32_t) override {}
    void Warned(const Text&, const Text&) override {}
    void NotSaved(const Text&, const Text&) override {}
};

} // namespace backends
