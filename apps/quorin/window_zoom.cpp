// SPDX-License-Identifier: MIT
#include "apps/quorin/window_zoom.h"

#include "companion/zoom.h"

#include <QApplication>
#include <QFontInfo>

#include <algorithm>

namespace quorin {

namespace {

const std::string Name = "Scale"; ///< of the setting

/// A device of fixed size is a tool of developers: what is remembered belongs to the desktop.
bool IsRemembered(const Options& options) {
    return platform::TraitsOf(options.Device.DeviceType).HasWindow;
}

} // namespace

/// The form's own text has a fixed size, that of a desktop with a font of 11 points on 96 pixels to the inch.
double UsualScale(const Options& options) {
    constexpr double FormText = 11 * 96.0 / 72.0;
    const double ofDesktop = QFontInfo(QApplication::font()).pixelSize() / FormText;
    return IsRemembered(options) ? std::max(options.UsualScale, companion::StepUpTo(ofDesktop)) : options.UsualScale;
}

double FirstScale(const Options& options, const WindowSettings& settings) {
    if (options.Scale)
        return *options.Scale;
    const double usual = UsualScale(options);
    return IsRemembered(options) ? companion::ScaleOfText(settings.Get(Name), usual) : usual;
}

WindowZoom::WindowZoom(backends::qt::QtPlatform& device, WindowSettings& settings, double usual)
    : Device_(device), Settings_(settings), Usual_(usual) {
}

void WindowZoom::TellLimit(double wanted) {
    const double used = Device_.window.Scale();
    if (used < wanted)
        Device_.onlooker.notices.Raise(companion::ScaleIsLimited(wanted, used));
    else
        Device_.onlooker.notices.Withdraw(companion::AboutScale);
}

void WindowZoom::Larger() {
    const double before = Device_.window.Scale();
    const double next = companion::LargerScale(before);
    Take(next);
    if (next == before)
        Device_.window.Say(QStringLiteral("This is the largest size."));
    else if (Device_.window.Scale() <= before)
        Device_.window.Say(QStringLiteral("This is as large as the screen has room for."));
}

void WindowZoom::Smaller() {
    const double before = Device_.window.Scale();
    const double next = companion::SmallerScale(before);
    Take(next);
    if (next == before)
        Device_.window.Say(QStringLiteral("This is the smallest size."));
}

void WindowZoom::Usual() {
    Take(Usual_);
}

void WindowZoom::Take(double scale) {
    Device_.window.SetScale(scale);
    if (Device_.window.IsResizable())
        Settings_.Save(Name, companion::ScaleText(Device_.window.Scale()));
    TellLimit(scale);
}

} // namespace quorin
