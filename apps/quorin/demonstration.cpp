// SPDX-License-Identifier: MIT
#include "apps/quorin/demonstration.h"

#include "apps/demo/demo_data.h"
#include "backends/files/host_files.h"
#include "backends/qt/conversions.h"
#include "companion/arrivals.h"

#include <QApplication>

#include <filesystem>
#include <system_error>
#include <utility>

namespace quorin {

using backends::qt::ToQt;
using modStringTools::FromBytes;

namespace {

/// The address of the port while the cable is pulled: nothing is there. The terminal's own path may be another
/// program's by then.
const std::string NoTerminal = "/dev/simulated-instrument";

std::vector<QString> KindsOf(const apps::DemoInstrument& meter) {
    std::vector<QString> kinds;
    for (const std::string& kind : meter.Kinds())
        kinds.push_back(QString::fromStdString(kind));
    return kinds;
}

} // namespace

Demonstration::Demonstration(backends::qt::QtPlatform& device, DemoTerminal& line, const DataFolder& data,
                             std::string ownFolder)
    : Device_(device), Line_(line), Meter_(line), Data_(data), OwnFolder_(std::move(ownFolder)), Guide_(device),
      Box_(device.boxes, device.window),
      Strip_(&device.window, KindsOf(Meter_), device.window.Menu().font(), device.window.WidthBelow()),
      PinnedPath_(line.Port()) {
    Strip_.KindWanted = [this](std::size_t kind) {
        Meter_.SendKind(kind);
        RaiseWhatIsPending();
    };
    Strip_.AllWanted = [this] {
        Meter_.SendAll();
        RaiseWhatIsPending();
    };
    Strip_.StrangerWanted = [this] {
        Meter_.SendOfAStranger();
        RaiseWhatIsPending();
    };
    Strip_.CableWanted = [this] { PullOrPlug(); };
    Strip_.AfreshWanted = [this] { AskToStartAfresh(); };
    RaiseWhatIsPending();
    device.window.PutBelow(Strip_);
    device.loop.Listen(*this);
}

// --- the instrument --------------------------------------------------------------------------------------------------

/// A port that a person has pinned to another address is left alone.
void Demonstration::PullOrPlug() {
    if (Line_.Port().empty())
        Line_.Plug();
    else
        Line_.Unplug();
    const std::string address = Line_.Port().empty() ? NoTerminal : Line_.Port();
    const auto& pins = Device_.host.ports.Pinned();
    const auto pin = pins.find(apps::DemoPort);
    if (pin != pins.end() && pin->second == backends::PathAddress(PinnedPath_)) {
        Device_.host.ports.Pin(apps::DemoPort, backends::PathAddress(address));
        PinnedPath_ = address;
    }
    RaiseWhatIsPending();
}

bool Demonstration::RaiseWhatIsPending() {
    const bool isAsked = companion::WhatIsInTheWay(Device_.boxes.AnyIsOpen()) == companion::InTheWay::Question;
    Meter_.Tick(Strip_.IsTicked());
    Meter_.Step(Device_.clock.Milliseconds(), isAsked);
    Strip_.SetWords(ToQt(Meter_.Words()));
    Strip_.SetHeard(Line_.IsHeard());
    Strip_.SetPlugged(Line_.IsPlugged());
    if (!OwnFolder_.empty())
        Strip_.OfferAfresh(MayStartAfresh());
    return false;
}

// --- a start with empty data -----------------------------------------------------------------------------------------

bool Demonstration::MayStartAfresh() const {
    return companion::WhatIsInTheWay(Device_.boxes.AnyIsOpen()) == companion::InTheWay::Nothing;
}

/// A link in the folder may lead to data that is not the demonstration's.
bool Demonstration::IsOwnData() const {
    std::error_code failed;
    const auto folder = std::filesystem::canonical(Data_.Path(), failed).string();
    return !failed && folder.rfind(OwnFolder_ + "/", 0) == 0;
}

void Demonstration::AskToStartAfresh() {
    if (Box_.IsOpen() || !MayStartAfresh())
        return;
    Box_.Open(ToQt(companion::AfreshQuestion) + QStringLiteral(":\n") + QString::fromStdString(Data_.Path()),
              {.Name = "afreshBox",
               .Icon = QMessageBox::Question,
               .Buttons = QMessageBox::Yes | QMessageBox::No,
               .Safe = QMessageBox::No},
              [this](QMessageBox::StandardButton answer) { AfreshWanted_ = answer == QMessageBox::Yes; });
}

void Demonstration::Step() {
    if (AfreshWanted_ && Device_.IsAtRest() && MayStartAfresh()) {
        AfreshWanted_ = false;
        StartAfresh();
    }
}

void Demonstration::StartAfresh() {
    Text why = FromBytes(Data_.Path()) + u" leads out of the demonstration's folder. Nothing was deleted.";
    if (IsOwnData()) {
        if (!Guide_.GoTo(modQuorin::ScrMain))
            return;
        why = apps::EmptyDemo();
        apps::PrepareDemo();
    }
    if (!why.empty())
        Box_.Open(ToQt(why), {.Name = "afreshBox"}, [](QMessageBox::StandardButton) {});
}

} // namespace quorin
