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
    const bool listening = Twin_.PortOpen || (Twin_.ServerMode && Twin_.LinkWanted);
    if (Twin_.WaitsForTomorrow() && Chance_.OneIn(10)) {
        WaitForTomorrow();
        return true;
    }
    if (!Air_.empty()) {
        if (Chance_.OneIn(5))
            WaitForTick();
        else
            Transmit();
        return true;
    }
    if (Twin_.Quiet() && !Twin_.WaitsForTomorrow() && !Chance_.OneIn(8)) {
        WaitForTick();
        return true;
    }
    if (Twin_.LinkWanted && !Twin_.LinkOpen && !Chance_.OneIn(10)) {
        WaitForTick();
        return true;
    }
    if (Results.Sent() < Wanted_ &&
        (listening ? Twin_.OnRecord() || Twin_.At == Place::Trace ? Chance_.OneIn(7) : Chance_.OneIn(25)
                   : Chance_.OneIn(80))) {
        Send();
        return true;
    }
    return false;
}

/// The instrument begins to send one record or a burst of them.
void Shift::Send() {
    const Outfit& outfit = OutfitInHand();
    const bool known = Twin_.Text.Connected == outfit.Identity;
    if (known ? Chance_.OneIn(60) : !Chance_.OneIn(4))
        Air_ += Meter_.Connect(outfit.Identity);
    for (std::uint32_t left = Chance_.OneIn(10) ? 3 : 1; left > 0; --left) {
        if (Chance_.OneIn(12))
            Air_ += Meter_.Noise();
        std::string origin = outfit.Identity;
        if (Chance_.OneIn(20))
            origin = Chance_.OneIn(2) ? "Z9" : "";
        Air_ += Meter_.Record(outfit, origin, Meter_.AnyHarm(), 4);
    }
    Gone_ = 0;
}

/// Transmits a part of what is being sent, cut anywhere but inside a character.
void Shift::Transmit() {
    if (KindOfDevice_.RoadOfLink == Road::Server) {
        Serve();
        return;
    }
    if (!Twin_.PortOpen) {
        LoseAir();
        return;
    }
    std::size_t end = Air_.size();
    if (Chance_.OneIn(3))
        end = Gone_ + 1 + Below(Air_.size() - Gone_);
    while (end < Air_.size() && (static_cast<unsigned char>(Air_[end]) & 0xC0U) == 0x80U)
        ++end;
    const std::string bytes = Air_.substr(Gone_, end - Gone_);
    Gone_ = end;
    Deliver(bytes);
    if (Gone_ < Air_.size())
        return;
    Air_.clear();
}

void Shift::Deliver(const std::string& bytes) {
    std::string shown;
    for (const char character : bytes)
        shown += character == '\r' ? "\\r" : character == '\n' ? "\\n" : std::string(1, character);
    Do(
        "receive " + shown, [&] { Twin_.Receive(bytes); },
        [&] {
            Device().serial.Arrive(modStringTools::FromBytes(bytes));
            Device().loop.HandleDue();
            return std::string();
        });
}

/// The port is not open: what has not been transmitted is lost.
void Shift::LoseAir() {
    Note("nobody listens");
    const std::vector<ResultId> through = IdsInRecords(Air_.substr(0, Gone_));
    for (const ResultId id : IdsInRecords(Air_)) {
        if (std::find(through.begin(), through.end(), id) == through.end())
            Results.Note(id, Fate::PortClosed);
    }
    Air_.clear();
}

/// The server process appends whole lines to the mailbox, with LF or CR LF, after those that the program has not
/// fetched.
void Shift::Serve() {
    std::size_t end = Air_.size();
    if (Chance_.OneIn(3)) {
        const std::size_t line = Air_.find('\n', Gone_ + Below(Air_.size() - Gone_));
        end = line == std::string::npos ? Air_.size() : line + 1;
    }
    std::string bytes = Air_.substr(Gone_, end - Gone_);
    if (Chance_.OneIn(2))
        bytes.erase(std::remove(bytes.begin(), bytes.end(), '\r'), bytes.end());
    Gone_ = end;
    Note("the server writes " + std::to_string(bytes.size()) + " bytes");
    Twin_.MailboxThere = true;
    Twin_.Mailbox += bytes;
    Folder_.PutMailbox("ipcout.txt", Twin_.Mailbox);
    if (Gone_ == Air_.size())
        Air_.clear();
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
    if (KindOfDevice_.RoadOfLink == Road::Server) {
        TroubleAtTheServer();
        return false;
    }
    if (Twin_.PortOpen && Chance_.OneIn(120)) {
        ++Counts.Drops;
        Do(
            "serial drop", [this] { Twin_.Drop(); },
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
        Twin_.FailOpenings(count);
        Device().serial.FailOpenings(count);
    }
    return false;
}

void Shift::TroubleAtTheServer() {
    if (Chance_.OneIn(Twin_.ServerRuns ? 500 : 30))
        SwitchServer();
    if (!Chance_.OneIn(Twin_.MailboxLocked ? 15 : 60))
        return;
    Twin_.MailboxLocked = !Twin_.MailboxLocked;
    ++Counts.Locks;
    Note(Twin_.MailboxLocked ? "the server locks the mailbox" : "the server unlocks the mailbox");
    if (Twin_.MailboxLocked)
        Folder_.PutMailbox("ipcout.lock", "");
    else
        Folder_.RemoveMailbox("ipcout.lock");
}

void Shift::SwitchServer() {
    Twin_.ServerRuns = !Twin_.ServerRuns;
    Note(Twin_.ServerRuns ? "the server starts" : "the server stops");
    if (Twin_.ServerRuns)
        Folder_.PutMailbox("rfcomm.run", "");
    else
        Folder_.RemoveMailbox("rfcomm.run");
}

// --- time

void Shift::WaitALittle() {
    Wait(std::min(Grain, Twin_.NextTick - Twin_.Now));
}

void Shift::WaitForTick() {
    Wait(Twin_.NextTick - Twin_.Now);
}

void Shift::Wait(Moment time) {
    Counts.Midnights += (Twin_.Now + time) / Day != Twin_.Now / Day ? 1 : 0;
    Do(
        "tick " + std::to_string(time), [&] { Twin_.Pass(time); },
        [&] {
            Device().loop.PassTime(time);
            return std::string();
        });
}

/// A record that came right before midnight waits for the same time of the next day, or for ever if there was a tick at
/// midnight itself: then the technician starts the program again.
void Shift::WaitForTomorrow() {
    ++Counts.Tomorrows;
    const Moment sleep = Twin_.TimeUntilTomorrow();
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
            while (!Air_.empty() && Difference_.empty())
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
    const Moment midnight = (Twin_.Now / Day + 1) * Day;
    Moment nap = (1 + Below(80)) * Grain;
    if (due > midnight && !Chance_.OneIn(4))
        nap = std::max<Moment>(midnight - Twin_.Now - (2 + Below(30)) * Grain, nap);
    else if (due > Twin_.Now)
        nap += (due - Twin_.Now) / Grain * Grain;
    Sleep(nap);
}

void Shift::Sleep(Moment time) {
    ++Counts.Sleeps;
    Do(
        "jump " + std::to_string(time), [&] { Twin_.Sleep(time); },
        [&] {
            Device().loop.Jump(time);
            Device().loop.HandleDue();
            return std::string();
        });
}

} // namespace shift
