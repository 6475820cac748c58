// SPDX-License-Identifier: MIT
#include "apps/quorin/window_watch.h"

#include "backends/linux/port_troubles.h"
#include "backends/qt/conversions.h"
#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/storage/settings.h"
#include "src/text/text.h"
#include "src/view/platform/device_traits.h"

#include <ctime>
#include <iostream>

namespace quorin {

using modStringTools::ToBytes;

namespace {

LinkRoad RoadOf(const Text& port, std::int32_t deviceType) {
    if (port == u"OFF")
        return LinkRoad::None;
    if (port == u"SERVER")
        return LinkRoad::Mailbox;
    const bool isCom = modStringTools::LowerCase(port.substr(0, 3)) == u"com";
    return platform::TraitsOf(deviceType).NamedPorts && !isCom ? LinkRoad::Named : LinkRoad::Serial;
}

} // namespace

WindowWatch::Moment WindowWatch::Now() {
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::milliseconds(now.tv_nsec / 1000000);
}

void WindowWatch::Attach(backends::qt::QtPlatform& device) {
    Device = &device;
    device.loop.Listen(*this);
    Box.emplace(device.boxes, device.window, [&device] { device.onlooker.losses.Seen(); });
    device.window.WarningTapped = [this] {
        Device->onlooker.notices.Tapped();
        ShowWorst();
    };
}

/// A tone is the answer to each result that has come, taken or not.
void WindowWatch::TonePlayed(std::int32_t hertz, std::int32_t milliseconds) {
    LastRecord = Now();
    Player.Play(hertz, milliseconds);
}

void WindowWatch::NotSaved(const Text& file, const Text& why) {
    std::cerr << "quorin: not saved: " + ToBytes(file) + ", " + ToBytes(why) + "\n";
}

void WindowWatch::Warned(const Text&, const Text& text) {
    std::cerr << "quorin: " + ToBytes(text) + "\n";
}

/// The worst of what a person should know has the line; what it hides comes when that one is gone.
void WindowWatch::ShowWorst() {
    const companion::Notice* const worst = Device->onlooker.notices.Worst();
    const Text words = worst == nullptr ? Text() : worst->Words;
    if (words != Warning)
        Device->window.SetWarning(backends::qt::ToQt(words));
    Warning = words;
}

void WindowWatch::ShowLosses() {
    companion::Losses& losses = Device->onlooker.losses;
    if (Box && losses.Any()) // not once the program ends
        Box->Say(backends::qt::ToQt(losses.Words()));
}

/// Who holds the port is found by a look at every process: not five times a second.
const std::string& WindowWatch::TroubleOf(const std::string& path, platform::ErrorNumber error) {
    constexpr auto BetweenLooks = std::chrono::seconds(2);
    const Moment now = Now();
    if (path != Trouble.Path || error != Trouble.Error || now - Trouble.Found >= BetweenLooks)
        Trouble = {path, error, now, backends::OpeningTrouble(path, error)};
    return Trouble.Words;
}

std::string WindowWatch::TroubleOfPort() {
    const std::string& told = Device->serial.Trouble();
    const std::string& address = Device->serial.Address();
    return told.empty() ? TroubleOf(address, Device->serial.LastOpening()) : address + ": " + told;
}

LinkView WindowWatch::Link() {
    const Text port = modQuorin::GetSetting(u"ComPort", u"OFF");
    LinkView link;
    link.Road = RoadOf(port, Device->system.DeviceType());
    link.Wanted = modBluetooth::Receive.LinkWanted;
    link.Open = modBluetooth::Ports.LinkOpen;
    link.Port = ToBytes(port);
    link.Held = Device->boxes.Piled();
    link.Waits = Device->serial.WaitingCharacters();
    if (link.Road == LinkRoad::Serial) {
        link.Path = Device->serial.Address();
        link.Open = Device->serial.PortOpen();
        link.Heard = Device->serial.Heard();
        if (Device->serial.LastOpening() != platform::NoError)
            link.Trouble = TroubleOfPort();
    }
    if (LastRecord)
        link.RecordAge = std::chrono::duration_cast<std::chrono::seconds>(Now() - *LastRecord).count();
    return link;
}

/// The loop may come by a thousand times a second, and the line tells whole seconds.
bool WindowWatch::RaiseWhatIsPending() {
    ShowWorst();
    constexpr auto BetweenLooks = std::chrono::milliseconds(200);
    const Moment now = Now();
    if (now - LastLook < BetweenLooks)
        return false;
    LastLook = now;
    const LinkLine line = LinkLineOf(Link());
    if (line != Shown)
        Device->window.SetLinkLine(QString::fromStdString(line.Text), line.Alive);
    Shown = line;
    return false;
}

} // namespace quorin
