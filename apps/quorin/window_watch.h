// SPDX-License-Identifier: MIT
// What the window shows outside of the form: how the link is, and what could not be written. And what is heard.
#pragma once

#include "apps/quorin/link_line.h"
#include "backends/linux/tones.h"
#include "backends/loop/silent_watcher.h"
#include "backends/qt/loss_box.h"
#include "backends/qt/qt_platform.h"

#include <chrono>
#include <optional>

namespace quorin {

class WindowWatch final : public backends::SilentWatcher, public backends::EventSource {
public:
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
    using Moment = std::chrono::milliseconds;
    /// The age of a record counts the time in which the machine has slept.
    static Moment Now();
    LinkView Link();
    void ShowWorst();
    std::string TroubleOfPort();
    const std::string& TroubleOf(const std::string& path, platform::ErrorNumber error);

    backends::qt::QtPlatform* Device = nullptr;
    backends::TonePlayer Player;
    std::optional<Moment> LastRecord;
    LinkLine Shown;
    Text Warning; ///< in the window's line
    std::optional<backends::qt::LossBox> Box;
    Moment LastLook{-1000};
    /// Why a port could not be opened when that was last looked into.
    struct {
        std::string Path;
        platform::ErrorNumber Error = platform::NoError;
        Moment Found{};
        std::string Words;
    } Trouble;
};

} // namespace quorin
