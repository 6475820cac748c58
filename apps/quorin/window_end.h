// SPDX-License-Identifier: MIT
// How the window's program ends: by itself, by a failure, by the system, or with its display gone.
#pragma once

#include "apps/quorin/window_watch.h"
#include "backends/loop/end_signals.h"
#include "backends/loop/ending.h"
#include "backends/qt/qt_platform.h"

namespace quorin {

class WindowEnd {
public:
    /// From now on the process does not end without a word: Qt calls exit from within its event handling when the
    /// display is gone. There is one such object, and it stands to the end.
    WindowEnd(backends::qt::QtPlatform& device, WindowWatch& watch, backends::EndSignals& signals);
    WindowEnd(const WindowEnd&) = delete;
    WindowEnd& operator=(const WindowEnd&) = delete;

    /// The program is over: tells why, and gives the exit status.
    int Over(const backends::ProgramOver& over);
    /// Saves what can be saved without a display, says so, and ends the process.
    [[noreturn]] void WithoutDisplay();

private:
    void Begin(const std::string& why);
    int TellEnding(const backends::ProgramOver& over) const;

    backends::qt::QtPlatform& Device;
    WindowWatch& Watch;
    backends::Ending Last;
};

/// The display is gone: WithoutDisplay, where there is a window yet.
void EndWithoutDisplay();

} // namespace quorin
