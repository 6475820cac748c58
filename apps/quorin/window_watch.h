// SPDX-License-Identifier: MIT
// Passes to the window what it shows outside of the form: the state of the link, the readings of the run, notices and
// lost readings. Also plays the tones.
#pragma once

#include "apps/quorin/window_settings.h"
#include "backends/loop/silent_watcher.h"
#include "backends/qt/loss_box.h"
#include "backends/qt/qt_platform.h"
#include "backends/qt/readings_panel.h"
#include "backends/sound/tones.h"
#include "companion/link_watch.h"
#include "companion/reading_table.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quorin {

class WindowWatch final : public backends::SilentWatcher, public backends::EventSource {
public:
    WindowWatch();

    /// Reports to the window of this device from now on.
    void Attach(backends::qt::QtPlatform& device);
    /// Called when a person chooses a notice that names a folder.
    std::function<void()> FolderWanted;

    /// Opens the panel of readings if it was open when the last run ended, and remembers from now on whether it is. The
    /// settings must live longer.
    void RestoreReadings(WindowSettings& settings);

    bool IsSilent() const { return Link_.IsSilent(); }
    /// What keeps the port of the record on the screen from opening (companion::Surroundings).
    const std::string& PortTrouble() const { return Link_.PortTrouble(); }
    /// What is done when a person takes the offer of this name.
    void Does(const Text& offer, std::function<void()> routine) { Offers_[offer] = std::move(routine); }

    void TonePlayed(std::int32_t hertz, std::int32_t milliseconds) override;
    void Warned(const Text& about, const Text& text) override;
    void NotSaved(const Text& file, const Text& why) override;

    /// Shows the window's box of lost readings, or updates it. Must be called at the outermost level of the loop.
    void ShowLosses();
    /// Closes the box, because the program ends.
    void CloseBox() { Box_.reset(); }

    // Updates the line in each round of the loop; the link's timer causes one at least twice a second.
    bool RaiseWhatIsPending() override;

private:
    static companion::LinkWatch::Moment Now();
    void ShowNotices();
    void ActOn(const Text& about);
    backends::qt::ReadingsPanel& Panel();

    backends::qt::QtPlatform* Device_ = nullptr;
    backends::TonePlayer Player_;
    companion::LinkWatch Link_;
    companion::LinkLine Shown_;
    std::vector<companion::Notice> ShownNotices_;
    companion::ReadingTable Readings_;
    std::optional<backends::qt::ReadingsPanel> Panel_; ///< none until a person opens it
    std::optional<backends::qt::LossBox> Box_;
    std::map<Text, std::function<void()>> Offers_;
    WindowSettings* Settings_ = nullptr;
};

} // namespace quorin
