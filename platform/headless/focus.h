// SPDX-License-Identifier: MIT
// Which control has the focus, and the events that come of its moving.
#pragma once

#include <functional>

namespace platform::headless {

/// A control that can have the focus.
struct FocusTarget {
    const char* Name = ""; ///< as the form calls it
    std::function<void()> GotFocus;
    std::function<void()> LostFocus;
};

class Focus {
public:
    const FocusTarget* Holder() const { return Current; }

    void MoveTo(FocusTarget& target) {
        if (Current == &target)
            return;
        FocusTarget* old = Current;
        Current = &target;
        Raise(old, &FocusTarget::LostFocus);
        if (Current == &target) // a handler may have moved it on
            Raise(&target, &FocusTarget::GotFocus);
    }

    /// The target is hidden: it can't keep the focus.
    void TakeFrom(FocusTarget& target) {
        if (Current != &target)
            return;
        Current = nullptr;
        Raise(&target, &FocusTarget::LostFocus);
    }

private:
    static void Raise(FocusTarget* target, std::function<void()> FocusTarget::*event) {
        if (target != nullptr && target->*event)
            (target->*event)();
    }

    FocusTarget* Current = nullptr;
};

} // namespace platform::headless
