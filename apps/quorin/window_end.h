// SPDX-License-Identifier: MIT
// How the program ends: by itself, by a failure, by the system, or because its display is gone.
#pragma once

#include "apps/quorin/window_watch.h"
#include "apps/start/exit_status.h"
#include "backends/host/end_signals.h"
#include "backends/loop/ending.h"
#include "backends/qt/qt_platform.h"

#include <functional>

namespace quorin {

class WindowEnd {
public:
    /// From now on the process does not end without a message: Qt calls exit from within its event handling when the
    /// display is gone. Only one such object may exist, and it must exist until the program ends.
    WindowEnd(backends::qt::QtPlatform& device, WindowWatch& watch, backends::EndSignals& signals);
    WindowEnd(const WindowEnd&) = delete;
    WindowEnd& operator=(const WindowEnd&) = delete;

    /// True if a draft of the record on the screen is on the medium.
    std::function<bool()> RecordIsKept = [] { return false; };

    /// Called before the end is reported: the machine may be switched off while the message of a failure is shown.
    /// `by`: what has ended the program from outside; empty for nothing.
    std::function<void(const backends::ProgramOver& over, const std::string& by)> Ends =
        [](const backends::ProgramOver&, const std::string&) {};

    /// Reports why the program ended and returns the exit status.
    start::ExitStatus Over(const backends::ProgramOver& over);
    /// Saves what can be saved without a display, reports it, and ends the process.
    [[noreturn]] void WithoutDisplay();

private:
    void Begin(const std::string& why);
    start::ExitStatus TellEnding(const backends::ProgramOver& over) const;

    backends::qt::QtPlatform& Device_;
    WindowWatch& Watch_;
    backends::Ending Last_;
};

/// Called when the display is gone: calls WithoutDisplay if there is a window already.
void EndWithoutDisplay();

} // namespace quorin
