// SPDX-License-Identifier: MIT
// The line, the time, and what goes wrong with them.
#include "tests/system/model/shift.h"

#include "backends/input/gestures.h"
#include "src/text/text.h"

#include <algorithm>

namespace shift {

namespace {

constexpr Moment Grain = 125; // milliseconds; a float represents every time of day that is a multiple of it
constexpr double DaysForTenThousand = 30;

} // namespace

/// Returns true if the instrument or the link had something to do.
bool Shift::ActOnLine() {
    const bool listening = Model_.PortOpen || (Model_.ServerMode && Model_.LinkWanted);
    if (Model_.WaitsForTomorrow() && Chance_.OneIn(10)) {
        WaitForTomorrow();
        return true;
    }
    if (!InFlight_.empty()) {
        if (Chance_.OneIn(5))
            WaitForTick();
        else
            Transmit();
        return true;
    }
    if (Model_.Quiet() && !Model_.WaitsForTomorrow() && !Chance_.OneIn(8)) {
        WaitForTick();
        return true;
    }
    if (Model_.LinkWanted && !Model_.LinkOpen && !Chance_.OneIn(10)) {
        WaitForTick();
        return true;
    }
    if (Results.Sent() < Wanted_ &&
        (listening ? Model_.OnRecord() || Model_.At == Place::Trace ? Chance_.OneIn(7) : Chance_.OneIn(25)
                   : Chance_.OneIn(80))) {
        Send();
        return true;
    }
    return false;
}

/// The instrument begins to send one record or a burst of them.
void Shift::Send() {
    const Outfit& outfit = OutfitInHand();
    const bool known = Model_.Text.Connected == outfit.Identity;
    if (known ? Chance_.OneIn(60) : !Chance_.OneIn(4))
        InFlight_ += Meter_.Connect(outfit.Identity);
    for (std::uint32_t left = Chance_.OneIn(10) ? 3 : 1; left > 0; --left) {
        if (Chance_.OneIn(12))
            InFlight_ += Meter_.Noise();
        std::string origin = outfit.Identity;
        if (Chance_.OneIn(20))
            origin = Chance_.OneIn(2) ? "Z9" : "";
        InFlight_ += Meter_.Record(outfit, origin, Meter_.AnyHarm(), 4);
    }
    Gone_ = 0;
}

/// Transmits a part of what is being sent, cut anywhere but inside a character.
void Shift::Transmit() {
    if (KindOfDevice_.KindOfLink == LinkKind::Server) {
        Serve();
        return;
    }
    if (!Model_.PortOpen) {
        LoseWhatIsInFlight();
        return;
    }
    std::size_t end = InFlight_.size();
    if (Chance_.OneIn(3))
        end = Gone_ + 1 + Below(InFlight_.size() - Gone_);
    while (end < InFlight_.size() && (static_cast<unsigned char>(InFlight_[end]) & 0xC0U) == 0x80U)
        ++end;
    const std::string bytes = InFlight_.substr(Gone_, end - Gone_);
    Gone_ = end;
    Deliver(bytes);
    if (Gone_ < InFlight_.size())
        return;
    InFlight_.clear();
}

void Shift::Deliver(const std::string& bytes) {
    std::string shown;
    for (const char character : bytes)
        shown += character == '\r' ? "\\r" : character == '\n' ? "\\n" : std::string(1, character);
    Do(
        "receive " + shown, [&] { Model_.Receive(bytes); },
        [&] {
            Device().serial.Arrive(modStringTools::FromBytes(bytes));
            Device().loop.HandleDue();
            return std::string();
        });
}

/// The port is not open: what has not been transmitted is lost.
void Shift::LoseWhatIsInFlight() {
    Note("nobody listens");
    const std::vector<ResultId> through = IdsInRecords(InFlight_.substr(0, Gone_));
    for (const ResultId id : IdsInRecords(InFlight_)) {
        if (std::find(through.begin(), through.end(), id) == through.end())
            Results.Note(id, Fate::PortClosed);
    }
    InFlight_.clear();
}

/// The server process appends whole lines to the mailbox, with LF or CR LF, after those that the program has not
/// fetched.
void Shift::Serve() {
    std::size_t end = InFlight_.size();
    if (Chance_.OneIn(3)) {
        const std::size_t line = InFlight_.find('\n', Gone_ + Below(InFlight_.size() - Gone_));
        end = line == std::string::npos ? InFlight_.size() : line + 1;
    }
    std::string bytes = InFlight_.substr(Gone_, end - Gone_);
    if (Chance_.OneIn(2))
        bytes.erase(std::remove(bytes.begin(), bytes.end(), '\r'), bytes.end());
    Gone_ = end;
    Note("the server writes " + std::to_string(bytes.size()) + " bytes");
    Model_.MailboxThere = true;
    Model_.Mailbox += bytes;
    Folder_.PutMailbox("ipcout.txt", Model_.Mailbox);
    if (Gone_ == InFlight_.size())
        InFlight_.clear();
}

/// Causes a fault at times. Returns true if this was a step of the shift.
bool Shift::Trouble() {
    if (Chance_.OneIn(50)) {
        TakeANap();
        return true;
    }
    if (Chance_.OneIn(600)) {
        Kill();
        return true;
    }
    if (KindOfDevice_.KindOfLink == LinkKind::Server) {
        TroubleAtTheServer();
        return false;
    }
    if (Model_.PortOpen && Chance_.OneIn(120)) {
        ++Counts.Drops;
        Do(
            "serial drop", [this] { Model_.Drop(); },
            [this] {
                Device().serial.Drop();
                return std::string();
            });
        return true;
    }
    if (Chance_.OneIn(400)) {
        const int count = 1 + static_cast<int>(Below(3));
        Counts.FailedOpenings += static_cast<std::uint64_t>(count);
        Note("serial fail " + std::to_string(count));
        Model_.FailOpenings(count);
        Device().serial.FailOpenings(count);
    }
    return false;
}

void Shift::TroubleAtTheServer() {
    if (Chance_.OneIn(Model_.ServerRuns ? 500 : 30))
        SwitchServer();
    if (!Chance_.OneIn(Model_.MailboxLocked ? 15 : 60))
        return;
    Model_.MailboxLocked = !Model_.MailboxLocked;
    ++Counts.Locks;
    Note(Model_.MailboxLocked ? "the server locks the mailbox" : "the server unlocks the mailbox");
    if (Model_.MailboxLocked)
        Folder_.PutMailbox("ipcout.lock", "");
    else
        Folder_.RemoveMailbox("ipcout.lock");
}

void Shift::SwitchServer() {
    Model_.ServerRuns = !Model_.ServerRuns;
    Note(Model_.ServerRuns ? "the server starts" : "the server stops");
    if (Model_.ServerRuns)
        Folder_.PutMailbox("rfcomm.run", "");
    else
        Folder_.RemoveMailbox("rfcomm.run");
}

// --- time

void Shift::WaitALittle() {
    Wait(std::min(Grain, Model_.NextTick - Model_.Now));
}

void Shift::WaitForTick() {
    Wait(Model_.NextTick - Model_.Now);
}

void Shift::Wait(Moment time) {
    Counts.Midnights += (Model_.Now + time) / Day != Model_.Now / Day ? 1 : 0;
    Do(
        "tick " + std::to_string(time), [&] { Model_.Pass(time); },
        [&] {
            Device().loop.PassTime(time);
            return std::string();
        });
}

/// A record that came right before midnight waits for the same time of the next day, or for ever if there was a tick at
/// midnight itself: then the technician starts the program again.
void Shift::WaitForTomorrow() {
    ++Counts.Tomorrows;
    const Moment sleep = Model_.TimeUntilTomorrow();
    if (sleep == 0)
        Kill();
    else
        Sleep(sleep);
}

/// Leaves the questions without an answer for an hour, while the instrument continues to send.
void Shift::LetQuestionsStand() {
    constexpr int Readings = 180;
    constexpr int TicksBetween = 40;
    ++Counts.Hours;
    for (int reading = 0; reading < Readings; ++reading) {
        Script_.push_back([this] {
            Send();
            while (!InFlight_.empty() && Difference_.empty())
                Transmit();
        });
        for (int tick = 0; tick < TicksBetween; ++tick)
            Script_.push_back([this] { WaitForTick(); });
    }
}

/// Lets the device sleep for a moment, or until the shift is on schedule (30 days for 10,000 results); sometimes until
/// shortly before midnight, so that it is awake at midnight.
void Shift::TakeANap() {
    const double part = static_cast<double>(Results.Sent()) / 10000;
    const Moment due = Began_ + static_cast<Moment>(part * DaysForTenThousand * static_cast<double>(Day));
    const Moment midnight = (Model_.Now / Day + 1) * Day;
    Moment nap = (1 + Below(80)) * Grain;
    if (due > midnight && !Chance_.OneIn(4))
        nap = std::max<Moment>(midnight - Model_.Now - (2 + Below(30)) * Grain, nap);
    else if (due > Model_.Now)
        nap += (due - Model_.Now) / Grain * Grain;
    Sleep(nap);
}

void Shift::Sleep(Moment time) {
    ++Counts.Sleeps;
    Do(
        "jump " + std::to_string(time), [&] { Model_.Sleep(time); },
        [&] {
            Device().loop.Jump(time);
            Device().loop.HandleDue();
            return std::string();
        });
}

} // namespace shift
