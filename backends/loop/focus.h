// SPDX-License-Identifier: MIT
// Which control has the focus, what keys do to it, and the events of a focus change.
#pragma once

#include "src/text/text.h"

#include <functional>

namespace backends {

/// A control that can have the focus.
struct FocusTarget {
    virtual ~FocusTarget() = default;

    /// The control's own reaction to a key that the form has not swallowed.
    virtual void ActOnKey(std::int32_t) {}
    virtual bool TakesText() const { return false; }
    /// Enters one typed character: two units for one beyond the first 65,536. Backspace is character 8.
    virtual void EnterCharacter(TextView) {}
    /// The user has replaced all of the text.
    virtual void ReplaceText(const Text&) {}

    const char* Name = ""; ///< its name in the form
    std::function<void()> GotFocus;
    std::function<void()> LostFocus;
};

class Focus {
public:
    FocusTarget* Holder() { return Current_; }
    const FocusTarget* Holder() const { return Current_; }
    /// Returns the control that gets the keys: `other` while none has the focus, as after a page key on Palm OS has
    /// closed a field.
    FocusTarget& HolderOr(FocusTarget& other) { return Current_ != nullptr ? *Current_ : other; }

    void MoveTo(FocusTarget& target) {
        if (Current_ == &target)
            return;
        FocusTarget* old = Current_;
        Current_ = &target;
        if (Moved)
            Moved();
        Raise(old, &FocusTarget::LostFocus);
        if (Current_ == &target) // a handler may have moved the focus again
            Raise(&target, &FocusTarget::GotFocus);
    }

    /// Called when the target is hidden, because a hidden control can't keep the focus.
    void TakeFrom(FocusTarget& target) {
        if (Current_ != &target)
            return;
        Current_ = nullptr;
        if (Moved)
            Moved();
        Raise(&target, &FocusTarget::LostFocus);
    }

    /// Called when another control or none has the focus, before the controls' own events.
    std::function<void()> Moved;

private:
    static void Raise(FocusTarget* target, std::function<void()> FocusTarget::*event) {
        if (target != nullptr && target->*event)
            (target->*event)();
    }

    FocusTarget* Current_ = nullptr;
};

} // namespace backends
