// SPDX-License-Identifier: MIT
// "Report a problem…" of the window's menu and of the help.
#pragma once

#include "apps/quorin/problem_report.h"
#include "backends/qt/qt_platform.h"
#include "backends/qt/report_dialog.h"

#include <optional>

namespace quorin {

class WindowReport {
public:
    WindowReport(backends::qt::QtPlatform& device, KeptPlaces places) : Device_(device), Places_(std::move(places)) {}

    void Open();

private:
    backends::qt::ReportSource Source();

    backends::qt::QtPlatform& Device_;
    KeptPlaces Places_;
    std::optional<backends::qt::ReportDialog> Dialog_; ///< none until a person opens it
};

} // namespace quorin
