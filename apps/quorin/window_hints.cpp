// SPDX-License-Identifier: MIT
#include "apps/quorin/window_hints.h"

#include "companion/driver_check.h"
#include "companion/form_state.h"
#include "src/link/ports.h"

#include <sstream>

namespace quorin {

namespace {

const std::string DoneName = "HintsDone"; ///< the steps, with commas between them
const std::string OnName = "Hints";       ///< "off", or anything else

companion::Hints::Steps StepsOf(const std::string& text) {
    companion::Hints::Steps steps;
    std::istringstream in(text);
    for (std::string step; std::getline(in, step, ',');)
        steps.insert(step);
    return steps;
}

std::string TextOf(const companion::Hints::Steps& steps) {
    std::string text;
    for (const std::string& step : steps)
        text += (text.empty() ? "" : ",") + step;
    return text;
}

} // namespace

WindowHints::WindowHints(backends::BackEnd& device, WindowSettings& settings, std::function<std::string()> portTrouble)
    : Device_(device), Settings_(settings), PortTrouble_(std::move(portTrouble)),
      Hints_(device.onlooker.notices, StepsOf(settings.Get(DoneName))) {
    Hints_.SetOn(settings.Get(OnName) != "off");
    Hints_.DoneChanged = [this] { Settings_.Save(DoneName, TextOf(Hints_.Done())); };
    device.loop.Listen(*this);
}

void WindowHints::SetOn(bool on) {
    Hints_.SetOn(on);
    Settings_.Save(OnName, on ? "on" : "off");
}

companion::Surroundings WindowHints::Look() {
    const modQuorin::ScreenId screen = modQuorin::Screens.CurrentScreen;
    if (screen != SeenScreen_ && Hints_.AsksForDriver()) // a file is read: not in each round
        HasDriver_ = !companion::DriversOfDevice().empty();
    SeenScreen_ = screen;
    const modBluetooth::LinkKind port = modBluetooth::KindOf(modBluetooth::StoredPort());
    const auto given = GivenPort ? GivenPort() : std::nullopt;
    const std::string name = given ? "Com" + std::to_string(given->first) : std::string();
    return {
        .HasDriver = HasDriver_,
        .IsStart = companion::IsStartScreen(),
        .IsListOfDownloads = companion::DownloadsAreListed(),
        .HasDownload = companion::AnyDownloadIsListed(),
        .HasPort = port != modBluetooth::LinkKind::None,
        .NamedPort = given ? name + " is " + given->second : std::string(),
        .NameOfPort = name,
        .LinkIsOpen = modBluetooth::Ports.LinkOpen,
        .PortTrouble = PortTrouble_(),
    };
}

bool WindowHints::RaiseWhatIsPending() {
    if (modQuorin::Screens.CurrentScreen != 0) // the form has been started
        Hints_.Look(Look());
    return false;
}

} // namespace quorin
