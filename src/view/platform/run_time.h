// SPDX-License-Identifier: MIT
// The event loop and the end of the program.
#pragma once

#include "src/text/text.h"

namespace platform {

enum class BoxButtons { Ok, YesNo };
enum class BoxIcon { None, Question };
enum class BoxAnswer { Ok, Yes, No };

/// Shows a text and waits for the answer in a nested loop, in which timers, the serial port and the form's events go
/// on. With Yes and No the default button is No.
class MessageBox {
public:
    virtual ~MessageBox() = default;
    virtual BoxAnswer Show(const Text& text, BoxButtons buttons, BoxIcon icon, const Text& title) = 0;
};

class RunTime {
public:
    virtual ~RunTime() = default;
    /// Handles what is pending and returns.
    virtual void DoEvents() = 0;
    /// Sleeps until something is pending, handles it and returns: for a loop that waits.
    virtual void WaitEvents() = 0;
    /// Lets time pass on the machine, for what other programs do meanwhile. Nothing of the form is raised; what is on
    /// the screen goes on being painted.
    virtual void Pause(std::int32_t milliseconds) = 0;
    /// The end of the program, at once: no event of the form follows.
    [[noreturn]] virtual void EndProgram() = 0;
    /// The program can't go on. Shows the message and ends with exit status 1; every file stays as the last completed
    /// save left it.
    [[noreturn]] virtual void RuntimeFailure(const Text& text) = 0;
};

} // namespace platform
