// SPDX-License-Identifier: MIT
#include "apps/quorin/window_watch.h"

#include "backends/linux/port_troubles.h"
#include "backends/qt/conversions.h"
#include "src/text/text.h"

#include <ctime>
#include <iostream>

namespace quorin {

using modStringTools::ToBytes;

WindowWatch::WindowWatch() : Link(backends::OpeningTrouble) {
}

companion::LinkWatch::Moment WindowWatch::Now() {
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::milliseconds(now.tv_nsec / 1000000);
}

void WindowWatch::Attach(backends::qt::QtPlatform& device) {
    Device = &device;
    device.loop.Listen(*this);
    Box.emplace(device.boxes, device.window, [&device] { device.onlooker.losses.Seen(); });
    device.window.NoticeTapped = [this](const Text& about) {
        Device->onlooker.notices.Act(about);
        ShowNotices();
    };
}

/// The program answers each result with a tone, whether it was taken or not.
void WindowWatch::TonePlayed(std::int32_t hertz, std::int32_t milliseconds) {
    Link.ResultCame(Now());
    Player.Play(hertz, milliseconds);
}

void WindowWatch::NotSaved(const Text& file, const Text& why) {
    std::cerr << "quorin: not saved: " + ToBytes(file) + ", " + ToBytes(why) + "\n";
}

void WindowWatch::Warned(const Text&, const Text& text) {
    std::cerr << "quorin: " + ToBytes(text) + "\n";
}

void WindowWatch::ShowNotices() {
    const companion::Notices& notices = Device->onlooker.notices;
    if (notices.Standing() == ShownNotices)
        return;
    ShownNotices = notices.Standing();
    Device->window.SetNotices(notices);
}

void WindowWatch::ShowLosses() {
    companion::Losses& losses = Device->onlooker.losses;
    if (Box && losses.Any()) // there is no box once the program is ending
        Box->Say(backends::qt::ToQt(losses.Words()));
}

companion::PortFacts WindowWatch::Port() const {
    const backends::DeviceSerial& serial = Device->serial;
    return {
        .Address = serial.Address(),
        .Open = serial.PortOpen(),
        .Heard = serial.Heard(),
        .Waiting = serial.WaitingCharacters(),
        .LastOpening = serial.LastOpening(),
        .Trouble = serial.Trouble(),
    };
}

bool WindowWatch::RaiseWhatIsPending() {
    ShowNotices();
    const auto now = Now();
    if (!Link.IsDue(now))
        return false;
    const companion::LinkLine line = Link.Line(Port(), Device->boxes.Piled(), now);
    if (line != Shown)
        Device->window.SetLinkLine(QString::fromStdString(line.Text), line.Alive);
    Shown = line;
    return false;
}

} // namespace quorin
