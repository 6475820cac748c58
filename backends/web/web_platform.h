// SPDX-License-Identifier: MIT
// A whole device whose form is on a page: the controls are those without a window, the page draws what they hold and
// sends what a person does.
#pragma once

#include "backends/headless/headless_control_set.h"
#include "backends/host/host_back_end.h"
#include "backends/web/mirror.h"
#include "backends/web/page_fonts.h"
#include "backends/web/web_pump.h"

#include <string>

namespace backends::web {

class WebPlatform final : private WebPump, public HostBackEnd, public headless::HeadlessControlSet {
public:
    /// `pageFonts` must exist for as long as the back-end.
    WebPlatform(HostDevice& device, PageFonts& pageFonts, CommandSource& commands, Watcher& watcher);

    Platform record;
    Stage stage;
    std::int64_t Heard = 0; ///< the number of the page's last event that was handled

    /// Called with the text of what is seen, when it has changed.
    std::function<void(const std::string& mirror)> Changed;

    /// Shows the page what is seen. Call it also when a person waits in the middle of a handler.
    void Show();
    /// The page has room for a form of this size: a resizable one lays itself out in it, as it does when a soft
    /// keyboard opens or closes.
    void TakeUpSize(ScreenSize room);

    /// The number of the open message box; 0 if none is open.
    std::int32_t BoxNumber() const { return stage.Box(BoxesOpened_); }

    /// True if nothing is going on that leading the form elsewhere would disturb: no message box is open, no finger is
    /// down, and the program is not ending.
    bool IsAtRest() const { return !loop.Ending() && boxes.Current() == nullptr && !grdMain.HandIsDown; }

    const Controls& Seen() const override { return controls; }

protected:
    Platform& Record() override { return record; }

private:
    std::int32_t WidestForm();

    PageFonts& PageFonts_;
    std::int32_t BoxesOpened_ = 0;
    std::string Shown_;
};

} // namespace backends::web
