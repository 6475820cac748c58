// SPDX-License-Identifier: MIT
#include "apps/quorin/demonstration.h"

#include "apps/quorin/demo.h"
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

constexpr std::int64_t Interval = 10000; // milliseconds

/// The address of the port while the cable is pulled: nothing is there. The terminal's own path may be another
/// program's by then.
const std::string NoTerminal = "/dev/simulated-instrument";

std::vector<QString> KindsOf(const DemoInstrument& meter) {
    std::vector<QString> kinds;
    for (const std::string& kind : meter.Kinds())
        kinds.push_back(QString::fromStdString(kind));
    return kinds;
}

} // namespace

Demonstration::Demonstration(backends::qt::QtPlatform& device, DemoInstrument& meter, const DataFolder& data,
                             std::string ownFolder)
    : Device_(device), Meter_(meter), Data_(data), OwnFolder_(std::move(ownFolder)), Guide_(device),
      Box_(device.boxes, device.window),
      Strip_(&device.window, KindsOf(meter), device.window.Menu().font(), device.window.WidthBelow()),
      PinnedPath_(meter.Port()) {
    Strip_.KindWanted = [this](std::size_t kind) {
        Send(FromBytes(Meter_.Kinds()[kind]), [this, kind] { return Meter_.Send(kind); });
    };
    Strip_.AllWanted = [this] { Send(u"one of each", [this] { return Meter_.SendAll(); }); };
    Strip_.StrangerWanted = [this] { Send(u"a stranger's reading", [this] { return Meter_.SendOfAStranger(); }); };
    Strip_.CableWanted = [this] { PullOrPlug(); };
    Strip_.AfreshWanted = [this] { AskToStartAfresh(); };
    RaiseWhatIsPending();
    device.window.PutBelow(Strip_);
    device.loop.Listen(*this);
}

// --- the instrument --------------------------------------------------------------------------------------------------

void Demonstration::Send(const Text& what, const std::function<bool()>& send) {
    State_.What = what;
    State_.Last = send() ? companion::SentState::Sent : companion::SentState::LineFull;
    WaitsSince_ = Device_.clock.Milliseconds();
    RaiseWhatIsPending();
}

/// A port that a person has pinned to another address is left alone.
void Demonstration::PullOrPlug() {
    if (Meter_.Port().empty())
        Meter_.Plug();
    else
        Meter_.Unplug();
    const std::string address = Meter_.Port().empty() ? NoTerminal : Meter_.Port();
    const auto& pins = Device_.host.ports.Pinned();
    const auto pin = pins.find(DemoPort);
    if (pin != pins.end() && pin->second == backends::PathAddress(PinnedPath_)) {
        Device_.host.ports.Pin(DemoPort, backends::PathAddress(address));
        PinnedPath_ = address;
    }
    RaiseWhatIsPending();
}

bool Demonstration::RaiseWhatIsPending() {
    SendIfDue();
    State_.IsPlugged = !Meter_.Port().empty();
    State_.IsHeard = Meter_.IsHeard();
    State_.Problem = FromBytes(Meter_.Problem());
    if (!State_.IsHeard)
        State_.Last = companion::SentState::Nothing;
    Strip_.SetWords(ToQt(companion::InstrumentLine(State_)));
    Strip_.SetHeard(State_.IsHeard);
    Strip_.SetPlugged(State_.IsPlugged);
    if (!OwnFolder_.empty())
        Strip_.OfferAfresh(MayStartAfresh());
    return false;
}

/// The interval starts again with each result, and with the end of a question.
void Demonstration::SendIfDue() {
    const std::int64_t now = Device_.clock.Milliseconds();
    const bool isAsked = companion::WhatIsInTheWay(Device_.boxes.AnyIsOpen()) == companion::InTheWay::Question;
    if (!Strip_.IsTicked() || isAsked || !Meter_.IsHeard())
        WaitsSince_ = now;
    else if (now - WaitsSince_ >= Interval)
        Send(u"a result", [this] { return Meter_.SendNext(); });
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
    Box_.Open(QStringLiteral("Start afresh? Every driver and download of the demonstration will be deleted:\n") +
                  QString::fromStdString(Data_.Path()),
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
        why = EmptyDemo();
        PrepareDemo();
    }
    if (!why.empty())
        Box_.Open(ToQt(why), {.Name = "afreshBox"}, [](QMessageBox::StandardButton) {});
}

} // namespace quorin
