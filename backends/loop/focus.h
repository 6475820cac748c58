// SPDX-License-Identifier: MIT
// Which control has the focus, what the keyboard can do to it, and the events that come of the focus moving.
#pragma once

#include "src/text/text.h"

#include <functional>

namespace backends {

/// A control that can have the focus.
struct FocusTarget {
    virtual ~FocusTarget() = default;

    /// The control's own answer to a key that the form has not swallowed.
    virtual void ActOnKey(std::int32_t) {}
    virtual bool TakesText() const { return false; }
    /// One character as typed, which is two units long outside of the first 65,536; backspace is character 8.
    virtual void EnterCharacter(TextView) {}
    /// The person has replaced all of the text.
    virtual void ReplaceText(const Text&) {}

    const char* Name = ""; ///< as the form calls it
    std::function<void()> GotFocus;
    std::function<void()> LostFocus;
};

class Focus {
public:
    FocusTarget* Holder() { return Current; }
    const FocusTarget* Holder() const { return Current; }
    /// Who takes the keys: while nothing has the focus, as after a Palm's page key has closed a field, another control.
    FocusTarget& HolderOr(FocusTarget& other) { return Current != nullptr ? *Current : other; }

    void MoveTo(FocusTarget& target) {
        if (Current == &target)
            return;
        FocusTarget* old = Current;
        Current = &target;
        if (Moved)
            Moved();
        Raise(old, &FocusTarget::LostFocus);
        if (Current == &target) // a handler may have moved it on
            Raise(&target, &FocusTarget::GotFocus);
    }

    /// The target is hidden: it can't keep the focus.
    void TakeFrom(FocusTarget& target) {
        if (Current != &target)
            return;
        Current = nullptr;
        if (Moved)
            Moved();
        Raise(&target, &FocusTarget::LostFocus);
    }

    /// Another control has the focus, or none; the controls have not heard of it yet.
    std::function<void()> Moved;

private:
    static void Raise(FocusTarget* target, std::function<void()> FocusTarget::*event) {
        if (target != nullptr && target->*event)
            (target->*event)();
    }

    FocusTarget* Current = nullptr;
};

} // namespace backends
