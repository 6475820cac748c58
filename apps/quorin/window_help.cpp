// SPDX-License-Identifier: MIT
#include "apps/quorin/window_help.h"

namespace quorin {

WindowHelp::WindowHelp(backends::qt::QtPlatform& device, const DataFolder& data, KeptPlaces places)
    : Device_(device), Data_(data), Places_(std::move(places)), Report_(device, Places_) {
    device.window.HelpWanted = [this] { Dialog().Toggle(PageOfScreen); };
}

backends::qt::HelpDialog& WindowHelp::Dialog() {
    if (!Dialog_) {
        Dialog_.emplace([this] { return HelpPages(Places_, Data_.Path()); }, Device_.window);
        Dialog_->ReportWanted = [this] { ReportProblem(); };
    }
    return *Dialog_;
}

} // namespace quorin
