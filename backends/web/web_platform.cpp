// SPDX-License-Identifier: MIT
#include "backends/web/web_platform.h"

#include "backends/loop/form_events.h"

#include <algorithm>

namespace backends::web {

namespace {

constexpr float BarWidth = 12; // pixels; the page draws its own

std::vector<DeviceKey> ShownKeys(std::int32_t deviceType) {
    return TraitsOf(deviceType).HasWindow ? std::vector<DeviceKey>() : ProfileOfType(deviceType).Keys;
}

} // namespace

WebPlatform::WebPlatform(HostDevice& device, PageFonts& pageFonts, CommandSource& commands, Watcher& watcher)
    : HostBackEnd(device, static_cast<WebPump&>(*this), commands, watcher),
      HeadlessControlSet(focus, loop, watcher, &pageFonts, BarWidth), record(RecordOf(controls)), stage(*this),
      PageFonts_(pageFonts) {
    DesignControls(controls);
    boxes.Opening = [this] {
        ++BoxesOpened_;
        if (grdMain.HandIsDown)
            tmrHoldEvent.SetEnabled(false);
        grdMain.HandIsDown = false; // the release goes to the box
    };
    Shows = [this] { Show(); };
}

void WebPlatform::Show() {
    stage.Look();
    if (!Changed)
        return;
    std::string mirror = MirrorText(*this, PageFonts_, stage,
                                    {.DeviceType = system.DeviceType(),
                                     .Keys = ShownKeys(system.DeviceType()),
                                     .BoxesOpened = BoxesOpened_,
                                     .Heard = Heard,
                                     .Notices = onlooker.notices});
    if (mirror == Shown_)
        return;
    Shown_ = std::move(mirror);
    Changed(Shown_);
}

/// Returns the greatest width of the form on a wide page, in pixels: the eye loses longer lines.
std::int32_t WebPlatform::WidestForm() {
    constexpr std::size_t Characters = 140; // of its font: a record has two columns
    const FontHandle font = PageFonts_.GetFont(grdMain.FontName(), grdMain.FontSize(), 0);
    return PageFonts_.WidthOf(font, Text(Characters, u'x'));
}

void WebPlatform::TakeUpSize(ScreenSize room) {
    constexpr std::int32_t Least = 160; // pixels, as the smallest device has
    const ScreenSize size{std::clamp(room.Width, Least, std::max(WidestForm(), Least)), std::max(room.Height, Least)};
    const Box now = PixelsOf(form);
    const bool isSame = now.Width == static_cast<float>(size.Width) && now.Height == static_cast<float>(size.Height);
    if (isSame || !TraitsOf(system.DeviceType()).HasWindow)
        return;
    TakeUpWorkArea(system, controls, size);
}

} // namespace backends::web
