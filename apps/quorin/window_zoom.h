// SPDX-License-Identifier: MIT
// The scale of the form: as the last run left it, and changed by keys.
#pragma once

#include "apps/quorin/window_options.h"
#include "apps/quorin/window_settings.h"
#include "backends/qt/qt_platform.h"

namespace quorin {

/// Returns the scale of the device in a window on this desktop: that of the options, or larger if the desktop's font is
/// larger than the form's. REQUIRES: Qt's application exists.
double UsualScale(const Options& options);
/// Returns the scale to start with: the one that was asked for, or the one of the last run, or the usual one.
double FirstScale(const Options& options, const WindowSettings& settings);

class WindowZoom final {
public:
    /// `usual`: the scale that Usual leads to.
    WindowZoom(backends::qt::QtPlatform& device, WindowSettings& settings, double usual);

    /// Tells if the screen has no room for the scale that the run should start with. Must be called once the form is
    /// shown.
    void TellLimit(double wanted);

    /// Change the scale at once, and remember it for the next run.
    void Larger();
    void Smaller();
    void Usual();

private:
    void Take(double scale);

    backends::qt::QtPlatform& Device_;
    WindowSettings& Settings_;
    double Usual_;
};

} // namespace quorin
