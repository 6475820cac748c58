// SPDX-License-Identifier: MIT
// "Hand over…" of the window's menu: what is new on the device goes to a stick, a share or a synchronised folder.
#pragma once

#include "apps/quorin/own_process.h"
#include "apps/quorin/window_settings.h"
#include "backends/qt/qt_platform.h"

#include <string>

namespace quorin {

class WindowHandOver {
public:
    /// `options`: the device of this run. `journal`: the folder of its journal; empty for none.
    WindowHandOver(backends::qt::QtPlatform& device, WindowSettings& settings, const backends::DeviceOptions& options,
                   std::string journal);

    /// Asks for the folder, which is remembered, and hands over.
    void Open();
    /// Hands over to this folder, while the form goes on. What becomes of it is a notice.
    void To(const std::string& folder);
    /// Tells how many records were never handed over, if a hand-over was made before. Call it at the start.
    void Count();

    OwnProcess Process; ///< the hand-over

private:
    void Tell(int status, const QByteArray& output, const QByteArray& errors, const std::string& folder);

    backends::qt::QtPlatform& Device_;
    WindowSettings& Settings_;
    QStringList Journal_; ///< the words that name it
    bool IsRunning_ = false;
};

} // namespace quorin
