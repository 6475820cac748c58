// SPDX-License-Identifier: MIT
#include "apps/quorin/window_watch.h"

#include "backends/host/host_clock.h"
#include "backends/linux/port_troubles.h"
#include "backends/loop/port_facts.h"
#include "backends/qt/conversions.h"
#include "companion/form_state.h"
#include "companion/words.h"
#include "src/text/text.h"

#include <algorithm>
#include <iostream>

namespace quorin {

using modStringTools::ToBytes;

namespace {

const std::string PanelName = "Readings"; ///< "open" or "closed"

} // namespace

WindowWatch::WindowWatch() : Link_(Now, backends::OpeningTrouble) {
}

companion::LinkWatch::Moment WindowWatch::Now() {
    return companion::LinkWatch::Moment(backends::HostTime().Steady());
}

void WindowWatch::Attach(backends::qt::QtPlatform& device) {
    Device_ = &device;
    device.loop.Listen(*this);
    Link_.Use(device.onlooker.limits);
    Readings_.Use(device.onlooker.limits);
    device.readings.Add(Link_);
    device.readings.Add(Readings_);
    device.window.ReadingsWanted = [this] { Panel().Toggle(); };
    Box_.emplace(device.boxes, device.window, [&device] { device.onlooker.losses.Seen(); });
    device.window.NoticeTapped = [this](const Text& about) { ActOn(about); };
    device.window.OfferTaken = [this](const Text& offer) {
        if (const auto found = Offers_.find(offer); found != Offers_.end())
            found->second();
        ShowNotices();
    };
}

/// Does what a person can do about a notice, if it is still there.
void WindowWatch::ActOn(const Text& about) {
    companion::Notices& notices = Device_->onlooker.notices;
    const auto& all = notices.Standing();
    const bool opens = std::any_of(all.begin(), all.end(), [&about](const companion::Notice& each) {
        return each.About == about && each.Action == companion::NoticeAction::Open;
    });
    if (opens && FolderWanted)
        FolderWanted();
    notices.Act(about);
    ShowNotices();
}

/// The panel is made when it is first opened: most starts need none.
backends::qt::ReadingsPanel& WindowWatch::Panel() {
    if (!Panel_) {
        Panel_.emplace(Readings_, Device_->window, [this] { return Device_->boxes.AnyIsOpen(); });
        Panel_->OpenChanged = [this](bool isOpen) {
            if (Settings_ != nullptr)
                Settings_->Save(PanelName, isOpen ? "open" : "closed");
        };
    }
    return *Panel_;
}

void WindowWatch::RestoreReadings(WindowSettings& settings) {
    Settings_ = &settings;
    if (settings.Get(PanelName) == "open")
        Panel().OpenAside();
}

void WindowWatch::TonePlayed(std::int32_t hertz, std::int32_t milliseconds) {
    Player_.Play(hertz, milliseconds);
}

void WindowWatch::NotSaved(const Text& file, const Text& why) {
    std::cerr << "quorin: not saved: " + ToBytes(file) + ", " + ToBytes(why) + "\n";
}

void WindowWatch::Warned(const Text&, const Text& text) {
    std::cerr << "quorin: " + ToBytes(text) + "\n";
}

void WindowWatch::ShowNotices() {
    const companion::Notices& notices = Device_->onlooker.notices;
    if (notices.Standing() == ShownNotices_)
        return;
    ShownNotices_ = notices.Standing();
    Device_->window.SetNotices(notices);
}

void WindowWatch::ShowLosses() {
    companion::Losses& losses = Device_->onlooker.losses;
    if (Box_ && losses.Any()) // there is no box once the program is ending
        Box_->Say(backends::qt::ToQt(losses.Words()));
}

bool WindowWatch::RaiseWhatIsPending() {
    ShowNotices();
    if (Panel_)
        Panel_->TakeUp();
    if (!Link_.IsDue())
        return false;
    Device_->window.setWindowTitle(backends::qt::ToQt(companion::WindowTitle()));
    companion::PortFacts port = backends::PortFactsOf(Device_->serial);
    port.Paused = Device_->LinkIsPaused();
    const companion::LinkLine line = Link_.Line(port, Device_->boxes.Piled());
    if (line != Shown_)
        Device_->window.SetLinkLine(line);
    Shown_ = line;
    if (Player_.TakeUnheard()) {
        Device_->window.FlashLink();
        Device_->onlooker.notices.Raise(companion::NoSound());
    }
    return false;
}

} // namespace quorin
