// SPDX-License-Identifier: MIT
// The help of the window: Ctrl+F1, "?", and what its entries in the window's menu open.
#pragma once

#include "apps/quorin/data_folder.h"
#include "apps/quorin/help_texts.h"
#include "apps/quorin/window_report.h"
#include "backends/qt/help_dialog.h"

#include <optional>

namespace quorin {

class WindowHelp {
public:
    WindowHelp(backends::qt::QtPlatform& device, const DataFolder& data, KeptPlaces places);

    /// Opens the help at a page, such as RecoveryCard.
    void Open(const std::string& page) { Dialog().Open(page); }
    void ReportProblem() { Report_.Open(); }

private:
    backends::qt::HelpDialog& Dialog();

    backends::qt::QtPlatform& Device_;
    const DataFolder& Data_;
    KeptPlaces Places_;
    WindowReport Report_;
    std::optional<backends::qt::HelpDialog> Dialog_; ///< none until a person opens it
};

} // namespace quorin
