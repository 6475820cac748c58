// SPDX-License-Identifier: MIT
// The line, the time, and what goes wrong with them.
#include "tests/system/model/shift.h"

#include "backends/input/gestures.h"
#include "src/text/text.h"

#include <algorithm>

namespace shift {

namespace {

constexpr Moment Grain = 125; // milliseconds, of which each time of day is a whole number that a float can hold
constexpr double DaysForTenThousand = 30;

} // namespace

/// Whether there was something to do for the instrument or the link.
bool Shift::ActOnLine() {
    const bool listening = Twin.PortOpen || (Twin.ServerMode && Twin.LinkWanted);
    if (Twin.WaitsForTomorrow() && Chance.OneIn(10)) {
        WaitForTomorrow();
        return true;
    }
    if (!Air.empty()) {
        if (Chance.OneIn(5))
            WaitForTick();
        else
            Transmit();
        return true;
    }
    if (Twin.Quiet() && !Twin.WaitsForTomorrow() && !Chance.OneIn(8)) {
        WaitForTick();
        return true;
    }
    if (Twin.LinkWanted && !Twin.LinkOpen && !Chance.OneIn(10)) {
        WaitForTick();
        return true;
    }
    if (Results.Sent() < Wanted &&
        (listening ? Twin.OnRecord() || Twin.At == Place::Trace ? Chance.OneIn(7) : Chance.OneIn(25)
                   : Chance.OneIn(80))) {
        Send();
        return true;
    }
    return false;
}

/// An instrument measures: one record or a burst of them goes into the air.
void Shift::Send() {
    const Outfit& outfit = OutfitInHand();
    const bool known = Twin.Text.Connected == outfit.Identity;
    if (known ? Chance.OneIn(60) : !Chance.OneIn(4))
        Air += Meter.Connect(outfit.Identity);
    for (std::uint32_t left = Chance.OneIn(10) ? 3 : 1; left > 0; --left) {
        if (Chance.OneIn(12))
            Air += Meter.Noise();
        std::string origin = outfit.Identity;
        if (Chance.OneIn(20))
            origin = Chance.OneIn(2) ? "Z9" : "";
        Air += Meter.Record(outfit, origin, Meter.AnyHarm(), 4);
    }
    Gone = 0;
}

/// Some of it reaches the device, cut anywhere but inside a character.
void Shift::Transmit() {
    if (KindOfDevice.RoadOfLink == Road::Server) {
        Serve();
        return;
    }
    if (!Twin.PortOpen) {
        LoseAir();
        return;
    }
    std::size_t end = Air.size();
    if (Chance.OneIn(3))
        end = Gone + 1 + Below(Air.size() - Gone);
    while (end < Air.size() && (static_cast<unsigned char>(Air[end]) & 0xC0U) == 0x80U)
        ++end;
    const std::string bytes = Air.substr(Gone, end - Gone);
    Gone = end;
    Deliver(bytes);
    if (Gone < Air.size())
        return;
    Air.clear();
}

void Shift::Deliver(const std::string& bytes) {
    std::string shown;
    for (const char character : bytes)
        shown += character == '\r' ? "\\r" : character == '\n' ? "\\n" : std::string(1, character);
    Do(
        "receive " + shown, [&] { Twin.Receive(bytes); },
        [&] {
            Device().serial.Arrive(modStringTools::FromBytes(bytes));
            Device().loop.HandleDue();
            return std::string();
        });
}

/// Nobody listens: what has not gone through by now is gone.
void Shift::LoseAir() {
    Note("nobody listens");
    const std::vector<ResultId> through = IdsInRecords(Air.substr(0, Gone));
    for (const ResultId id : IdsInRecords(Air)) {
        if (std::find(through.begin(), through.end(), id) == through.end())
            Results.Note(id, Fate::PortClosed);
    }
    Air.clear();
}

/// The server beside the program puts whole lines into the mailbox, with line ends of its own, behind what nobody has
/// fetched yet.
void Shift::Serve() {
    std::size_t end = Air.size();
    if (Chance.OneIn(3)) {
        const std::size_t line = Air.find('\n', Gone + Below(Air.size() - Gone));
        end = line == std::string::npos ? Air.size() : line + 1;
    }
    std::string bytes = Air.substr(Gone, end - Gone);
    if (Chance.OneIn(2))
        bytes.erase(std::remove(bytes.begin(), bytes.end(), '\r'), bytes.end());
    Gone = end;
    Note("the server writes " + std::to_string(bytes.size()) + " bytes");
    Twin.MailboxThere = true;
    Twin.Mailbox += bytes;
    Folder.PutMailbox("ipcout.txt", Twin.Mailbox);
    if (Gone == Air.size())
        Air.clear();
}

/// Whether something went wrong.
bool Shift::Trouble() {
    if (Chance.OneIn(50)) {
        TakeANap();
        return true;
    }
    if (Chance.OneIn(600)) {
        Kill();
        return true;
    }
    if (KindOfDevice.RoadOfLink == Road::Server) {
        TroubleAtTheServer();
        return false;
    }
    if (Twin.PortOpen && Chance.OneIn(120)) {
        ++Counts.Drops;
        Do(
            "serial drop", [this] { Twin.Drop(); },
            [this] {
                Device().serial.Drop();
                return std::string();
            });
        return true;
    }
    if (Chance.OneIn(400)) {
        const int count = 1 + static_cast<int>(Below(3));
        Counts.FailedOpenings += static_cast<std::uint64_t>(count);
        Note("serial fail " + std::to_string(count));
        Twin.FailOpenings(count);
        Device().serial.FailOpenings(count);
    }
    return false;
}

void Shift::TroubleAtTheServer() {
    if (Chance.OneIn(Twin.ServerRuns ? 500 : 30))
        SwitchServer();
    if (!Chance.OneIn(Twin.MailboxLocked ? 15 : 60))
        return;
    Twin.MailboxLocked = !Twin.MailboxLocked;
    ++Counts.Locks;
    Note(Twin.MailboxLocked ? "the server locks the mailbox" : "the server unlocks the mailbox");
    if (Twin.MailboxLocked)
        Folder.PutMailbox("ipcout.lock", "");
    else
        Folder.RemoveMailbox("ipcout.lock");
}

void Shift::SwitchServer() {
    Twin.ServerRuns = !Twin.ServerRuns;
    Note(Twin.ServerRuns ? "the server starts" : "the server stops");
    if (Twin.ServerRuns)
        Folder.PutMailbox("rfcomm.run", "");
    else
        Folder.RemoveMailbox("rfcomm.run");
}

// --- time

void Shift::WaitALittle() {
    Wait(std::min(Grain, Twin.NextTick - Twin.Now));
}

void Shift::WaitForTick() {
    Wait(Twin.NextTick - Twin.Now);
}

void Shift::Wait(Moment time) {
    Counts.Midnights += (Twin.Now + time) / Day != Twin.Now / Day ? 1 : 0;
    Do(
        "tick " + std::to_string(time), [&] { Twin.Pass(time); },
        [&] {
            Device().loop.PassTime(time);
            return std::string();
        });
}

/// A record that came right before midnight waits for the same moment of the next day, or, with a tick at midnight
/// itself, for ever: then the technician starts the program again.
void Shift::WaitForTomorrow() {
    ++Counts.Tomorrows;
    const Moment sleep = Twin.TimeUntilTomorrow();
    if (sleep == 0)
        Kill();
    else
        Sleep(sleep);
}

/// Nobody answers for an hour, in which the instrument sends by itself.
void Shift::LetQuestionsStand() {
    constexpr int Readings = 180;
    constexpr int TicksBetween = 40;
    ++Counts.Hours;
    for (int reading = 0; reading < Readings; ++reading) {
        Script.push_back([this] {
            Send();
            while (!Air.empty() && Difference.empty())
                Transmit();
        });
        for (int tick = 0; tick < TicksBetween; ++tick)
            Script.push_back([this] { WaitForTick(); });
    }
}

/// The device sleeps: for a moment, or so long that the shift keeps its pace; now and then until shortly before
/// midnight, to be awake then.
void Shift::TakeANap() {
    const double part = static_cast<double>(Results.Sent()) / 10000;
    const Moment due = Began + static_cast<Moment>(part * DaysForTenThousand * static_cast<double>(Day));
    const Moment midnight = (Twin.Now / Day + 1) * Day;
    Moment nap = (1 + Below(80)) * Grain;
    if (due > midnight && !Chance.OneIn(4))
        nap = std::max<Moment>(midnight - Twin.Now - (2 + Below(30)) * Grain, nap);
    else if (due > Twin.Now)
        nap += (due - Twin.Now) / Grain * Grain;
    Sleep(nap);
}

void Shift::Sleep(Moment time) {
    ++Counts.Sleeps;
    Do(
        "jump " + std::to_string(time), [&] { Twin.Sleep(time); },
        [&] {
            Device().loop.Jump(time);
            Device().loop.HandleDue();
            return std::string();
        });
}

} // namespace shift
