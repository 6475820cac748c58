// SPDX-License-Identifier: MIT
// Gives the window what it shows outside of the form: the state of the link, notices, readings that are lost. And plays
// what is heard.
#pragma once

#include "backends/linux/tones.h"
#include "backends/loop/silent_watcher.h"
#include "backends/qt/loss_box.h"
#include "backends/qt/qt_platform.h"
#include "companion/link_watch.h"

#include <optional>
#include <vector>

namespace quorin {

class WindowWatch final : public backends::SilentWatcher, public backends::EventSource {
public:
    WindowWatch();

    /// Tells the window of this device from now on.
    void Attach(backends::qt::QtPlatform& device);

    void TonePlayed(std::int32_t hertz, std::int32_t milliseconds) override;
    void Warned(const Text& about, const Text& text) override;
    void NotSaved(const Text& file, const Text& why) override;

    /// To be called at the outermost level of the loop: shows the window's own box of readings that are lost, or what
    /// has come to that.
    void ShowLosses();
    /// The program ends: the box goes with it.
    void CloseBox() { Box.reset(); }

    // The line is looked at when the loop comes by, which the link's timer makes it do twice a second.
    int Descriptor() override { return -1; }
    bool RaiseWhatIsPending() override;

private:
    static companion::LinkWatch::Moment Now();
    companion::PortFacts Port() const;
    void ShowNotices();

    backends::qt::QtPlatform* Device = nullptr;
    backends::TonePlayer Player;
    companion::LinkWatch Link;
    companion::LinkLine Shown;
    std::vector<companion::Notice> ShownNotices;
    std::optional<backends::qt::LossBox> Box;
};

} // namespace quorin
