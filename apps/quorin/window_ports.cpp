// SPDX-License-Identifier: MIT
#include "apps/quorin/window_ports.h"

#include "backends/files/folder_names.h"
#include "backends/linux/port_names.h"
#include "backends/serial/byte_sources.h"
#include "companion/port_setting.h"
#include "companion/words.h"
#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/view/navigation.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace quorin {

using backends::PortAddress;
using modStringTools::FromBytes;

namespace {

constexpr auto BetweenLooks = std::chrono::seconds(2);

std::string PinName(std::int32_t number) {
    return "Pin" + std::to_string(number);
}

/// A path that depends on the folder of a start would mean another device in the next run.
std::string WhyNotUsable(const std::string& typed) {
    const backends::AddressReading read = backends::ReadAddress(typed);
    if (!read.Address)
        return typed + " " + read.Error + ".";
    if (const std::string missing = backends::WhyNotBuilt(*read.Address); !missing.empty())
        return missing + ".";
    if (read.Address->Kind == backends::AddressKind::Path && typed.front() != '/')
        return "The path of a device begins with a slash, such as /dev/rfcomm0. Other addresses begin with tcp: or "
               "exec:.";
    return {};
}

bool AreOneDevice(const std::string& path, const std::string& other) {
    std::string canonical;
    std::string otherCanonical;
    return path == other ||
           (backends::Canonical(path, canonical) == platform::NoError &&
            backends::Canonical(other, otherCanonical) == platform::NoError && canonical == otherCanonical);
}

} // namespace

std::map<std::int32_t, PortAddress> PinsWith(const WindowSettings& settings, std::map<std::int32_t, PortAddress> given,
                                             std::vector<std::string>& wrong) {
    for (std::int32_t number = 1; number <= backends::LastPortNumber; ++number) {
        const std::string pin = settings.Get(PinName(number));
        if (pin.empty() || given.count(number) != 0)
            continue;
        const backends::AddressReading read = backends::ReadAddress(pin);
        if (read.Address)
            given.emplace(number, *read.Address);
        else
            wrong.push_back(PinName(number) + "=" + pin + " " + read.Error);
    }
    return given;
}

WindowPorts::WindowPorts(backends::qt::QtPlatform& device, WindowSettings& settings, std::function<bool()> isSilent)
    : Device_(device), Settings_(settings), IsSilent_(std::move(isSilent)) {
    device.loop.Listen(*this);
}

std::vector<companion::PortRow> WindowPorts::Rows() const {
    backends::PortSurvey survey = Survey;
    survey.Pinned = Device_.host.ports.Pinned();
    survey.Own = Device_.serial.PortOpen() ? Device_.serial.Address() : std::string();
    return backends::SerialPorts(survey);
}

/// What the dialog compares to see whether its list is still true.
std::vector<std::string> WindowPorts::Names() const {
    std::vector<std::string> names = backends::PortNames(Survey.DeviceFolder);
    if (Device_.serial.PortOpen())
        names.push_back("open: " + Device_.serial.Address());
    return names;
}

void WindowPorts::OpenDialog() {
    if (!Dialog_)
        Dialog_.emplace(backends::qt::PortsOfMachine{
                            .Survey = [this] { return Rows(); },
                            .Names = [this] { return Names(); },
                            .Use = [this](const companion::PortChoice& choice) { Use(choice); },
                            .WhyNotUsable = WhyNotUsable,
                            .Forget = [this](std::int32_t number) { Forget(number); },
                            .Listen = [this](const std::vector<std::string>& paths) { Probe_.Start(paths); },
                            .Heard = [this] { return Probe_.Counts(); },
                        },
                        Device_.window);
    Dialog_->Open();
}

/// A link that is open with another device is dropped as if that had been unplugged: the next tick opens the chosen
/// one.
void WindowPorts::DropOther(const std::string& address) {
    if (Device_.serial.PortOpen() && !AreOneDevice(Device_.serial.Address(), address))
        Device_.serial.Drop();
}

void WindowPorts::Use(const companion::PortChoice& choice) {
    const backends::AddressReading read = backends::ReadAddress(choice.Address);
    if (!read.Address)
        return;
    Device_.host.ports.Pin(choice.Number, *read.Address);
    Settings_.Save(PinName(choice.Number), choice.Address);
    companion::ChoosePort(choice.Number);
    DropOther(choice.Address);
    WithdrawOffer();
}

void WindowPorts::Forget(std::int32_t number) {
    Device_.host.ports.Unpin(number);
    Settings_.Save(PinName(number), "");
    DropOther(ChosenDevice());
}

bool WindowPorts::IsOfUse(const std::string& path) const {
    const bool isInUse = Device_.serial.PortOpen() && AreOneDevice(Device_.serial.Address(), path);
    return std::filesystem::exists(path) && !isInUse && (!backends::IsBoardPort(path) || LacksDevice());
}

void WindowPorts::Offer(const std::string& path, const Text& words) {
    Offered_ = path;
    Device_.onlooker.notices.Raise(companion::PortOffered(words));
}

void WindowPorts::UseOffered() {
    const std::vector<companion::PortRow> rows = Rows();
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [this](const companion::PortRow& each) { return each.Path == Offered_; });
    if (row != rows.end())
        Use(companion::ChoiceOf(rows, static_cast<std::size_t>(row - rows.begin())));
    WithdrawOffer();
}

std::optional<std::pair<std::int32_t, std::string>> WindowPorts::Given() const {
    const auto& pinned = Device_.host.ports.Pinned();
    if (pinned.empty())
        return std::nullopt;
    return std::pair(pinned.begin()->first, AddressText(pinned.begin()->second));
}

void WindowPorts::UseGiven() {
    if (const auto port = Given())
        companion::ChoosePort(port->first);
}

void WindowPorts::DropOffer() {
    Refused_.insert(Offered_);
    WithdrawOffer();
}

void WindowPorts::WithdrawOffer() {
    Offered_.clear();
    Device_.onlooker.notices.Withdraw(companion::AboutAdapter);
}

/// Returns the device that the chosen name means now; empty for none.
std::string WindowPorts::ChosenDevice() const {
    const Text port = modBluetooth::StoredPort();
    if (modBluetooth::KindOf(port) != modBluetooth::LinkKind::Serial)
        return {};
    const auto number = modBluetooth::PortNumber(port);
    const auto address = number ? Device_.host.ports.AddressOf(*number) : std::nullopt;
    return address ? AddressText(*address) : std::string();
}

/// An adapter is offered at the look after the one that has noticed it: by then its name in `serial/by-id` is there.
/// The adapter that the chosen name means already needs no offer: the link's next tick opens it.
void WindowPorts::OfferArrival(const std::vector<std::string>& adapters) {
    for (const std::string& path : std::exchange(Arrived_, PluggedIn_.Look(adapters))) {
        if (!IsSilent_() || AreOneDevice(path, ChosenDevice()) || !std::filesystem::exists(path))
            continue;
        const std::string product = companion::ProductOf(Survey.Describe(path));
        Refused_.erase(path);
        Offer(path, FromBytes(backends::NameOf(path) + (product.empty() ? "" : " (" + product + ")")) +
                        u" was plugged in. Use it?");
    }
}

/// True if the record on the screen wants the link, and no device is there for the chosen name.
bool WindowPorts::LacksDevice() const {
    return modBluetooth::Receive.LinkWanted && !Device_.serial.PortOpen() &&
           Device_.serial.LastOpening() != platform::NoError && Device_.serial.Address().empty() &&
           modBluetooth::KindOf(modBluetooth::StoredPort()) == modBluetooth::LinkKind::Serial;
}

/// A machine without an adapter may have a port of its own. It may be the console, so that a person has to choose it.
void WindowPorts::OfferBoardPort(const std::vector<std::string>& adapters) {
    if (!LacksDevice() || !adapters.empty() || !Offered_.empty())
        return;
    for (const std::string& path : backends::BoardPorts(Survey.DeviceFolder, Survey.SystemFolder))
        if (Refused_.count(path) == 0)
            return Offer(path, u"No adapter is plugged in. This machine has a port of its own, " + FromBytes(path) +
                                   u". Use it?");
}

bool WindowPorts::RaiseWhatIsPending() {
    const auto now = std::chrono::steady_clock::now();
    if (now - LastLook_ < BetweenLooks)
        return false;
    LastLook_ = now;
    const std::vector<std::string> adapters = backends::Adapters(Survey.DeviceFolder);
    OfferArrival(adapters);
    OfferBoardPort(adapters);
    if (!Offered_.empty() && !IsOfUse(Offered_))
        WithdrawOffer();
    return false;
}

} // namespace quorin
