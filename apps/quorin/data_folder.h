// SPDX-License-Identifier: MIT
// Where the data is: shown in the window, and opened by the desktop.
#pragma once

#include "backends/qt/qt_platform.h"
#include "backends/qt/window_box.h"

#include <functional>
#include <string>

namespace quorin {

/// Keeps the notice of the data folder: that of the volume which is in use.
class DataFolder final : public backends::EventSource {
public:
    /// `root`: the full path of the root folder.
    DataFolder(backends::qt::QtPlatform& device, std::string root);

    /// Opens the folder in the desktop's file manager. If that is not possible, says so in a box of the window.
    void Open();
    /// Returns the folder on the host; the root folder as long as the form has not started.
    const std::string& Path() const { return Path_; }

    /// Asks the desktop to open a folder. Returns false if nothing opens folders.
    std::function<bool(const std::string& folder)> Opener;

    bool RaiseWhatIsPending() override;

private:
    backends::qt::QtPlatform& Device_;
    std::string Root_;
    Text Shown_; ///< the folder of the device that Path_ is
    std::string Path_;
    backends::qt::WindowBox Box_;
};

} // namespace quorin
