// SPDX-License-Identifier: MIT
// The event loop and the end of the program.
#pragma once

#include "src/text/text.h"

namespace platform {

enum class BoxButtons { Ok, YesNo };
enum class BoxIcon { None, Question };
enum class BoxAnswer { Ok, Yes, No };

/// Shows a text and waits for the answer in a nested loop, in which events of timers, of the serial port and of the
/// form are raised. With Yes and No the default button is No. If the pointer is down on a cell when the box opens, the
/// box gets the release: none is raised, and tmrHoldEvent is stopped.
class MessageBox {
public:
    virtual ~MessageBox() = default;
    virtual BoxAnswer Show(const Text& text, BoxButtons buttons, BoxIcon icon, const Text& title) = 0;
};

class RunTime {
public:
    virtual ~RunTime() = default;
    /// Handles pending events and returns.
    virtual void DoEvents() = 0;
    /// Sleeps until an event is pending, handles it and returns. For loops that wait.
    virtual void WaitEvents() = 0;
    /// Waits, so that other programs can work. No event of the form is raised; the screen is still painted.
    virtual void Pause(std::int32_t milliseconds) = 0;
    /// Ends the program at once. No event of the form follows.
    [[noreturn]] virtual void EndProgram() = 0;
    /// Shows the message and ends the program with exit status 1. Every file stays as the last completed save left it.
    [[noreturn]] virtual void RuntimeFailure(const Text& text) = 0;
};

} // namespace platform
