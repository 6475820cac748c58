// SPDX-License-Identifier: MIT
// What the window remembers of its own from one run to the next: texts under names, in the file "window.ini".
#pragma once

#include "backends/files/settings_file.h"

#include <functional>
#include <string>

namespace quorin {

class WindowSettings {
public:
    /// `formSettings`: the file of the form's settings, beside which the window has its own.
    explicit WindowSettings(const std::string& formSettings);

    /// Returns the path of the file, which need not exist.
    const std::string& Path() const { return Path_; }
    /// Returns an empty text for what was never stored.
    std::string Get(const std::string& name) const;
    /// The first failure is reported by Failed, because nothing will be remembered.
    void Save(const std::string& name, const std::string& value);

    /// Called with the file and the reason.
    std::function<void(const std::string& file, const std::string& why)> Failed;

private:
    std::string Path_;
    backends::SettingsFile File_;
    bool HasFailed_ = false;
};

} // namespace quorin
