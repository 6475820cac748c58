// SPDX-License-Identifier: MIT
#include "src/view/status_strip.h"

#include "src/view/display_state.h"
#include "src/view/platform/platform.h"

namespace modPDAUI {

using platform::Device;

namespace {

constexpr std::int32_t DarkBlue = 0x800000; // 0xBBGGRR

void EnableControls(bool enabled) {
    Device().grdMain.SetEnabled(enabled);
    Device().grdTitle.SetEnabled(enabled);
    Device().mnuButton1.SetEnabled(enabled);
    Device().mnuButton2.SetEnabled(enabled);
}

} // namespace

void ShowStatus(const Text& text) {
    auto& label = Device().lblStatus;
    const platform::Box grid = Device().grdMain.Bounds();
    label.SetFontName(Display.DefaultFontName);
    label.SetFontSize(Display.DefaultFontSize);
    auto& fonts = Device().fontServer;
    const auto font = fonts.GetFont(label.FontName(), label.FontSize(), 0);
    const auto size = fonts.MeasureWrapped(font, text, static_cast<std::int32_t>(grid.Width));
    label.SetBackColor(DarkBlue);
    label.SetForeColor(platform::White);
    label.SetCaption(text);
    // The strip grows upward: its lower edge is the grid's.
    const float height = static_cast<float>(size.Height);
    label.SetBounds({grid.Left, grid.Top + grid.Height - height, grid.Width, height});
    label.SetVisible(true);
    label.Refresh(); // the event loop does not run during the caller's long operation
    EnableControls(false);
}

void HideStatus() {
    Device().lblStatus.SetVisible(false);
    EnableControls(true);
}

void ShowBusy(bool busy) {
    if (busy)
        ShowStatus(u"Busy");
    else
        HideStatus();
}

} // namespace modPDAUI
