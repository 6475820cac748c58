// SPDX-License-Identifier: MIT
#include "backends/loop/event_loop.h"

#include <algorithm>
#include <cstdlib>
#include <poll.h>

namespace backends {

namespace {

constexpr std::int64_t LongestSleep = 60000; // milliseconds; poll takes an int

/// A window may always have something to handle: a caret blinks, and a long text may take longer to paint than one
/// blink.
constexpr int MostWindowRounds = 3;

/// The same is true of a flooded line, and of a timer whose tick takes longer than its interval. Everything else needs
/// far fewer rounds at a time.
constexpr int MostRounds = 16;

/// Rounds with much to do may still take long together. In milliseconds; commands and the window wait no longer than
/// this and one more round.
constexpr std::int64_t LongestWithoutBreak = 100;

bool CanBeRead(int descriptor) {
    pollfd waiting{descriptor, POLLIN, 0};
    return ::poll(&waiting, 1, 0) > 0;
}

} // namespace

LoopTimer::LoopTimer(EventLoop& loop, std::int32_t interval, bool enabled, void (*tick)())
    : Loop(loop), Every(interval), Tick(tick) {
    loop.Add(*this);
    LoopTimer::SetEnabled(enabled);
}

void LoopTimer::SetEnabled(bool enabled) {
    if (enabled && !Running)
        NextTick = Loop.ClockOfLoop().Milliseconds() + Every;
    Running = enabled;
}

void LoopTimer::SetInterval(std::int32_t milliseconds) {
    if (milliseconds == Every)
        return;
    Every = milliseconds;
    NextTick = Loop.ClockOfLoop().Milliseconds() + Every;
}

/// The next tick is set first, because the timer goes on while a handler waits. Missed ticks are raised as one. A held
/// tick does not stay due, or the loop would find it again at once and never sleep.
void LoopTimer::Fire(std::int64_t now) {
    NextTick += Every;
    if (NextTick <= now)
        NextTick = now + Every;
    if (!Held || !Held())
        Tick();
}

LoopTimer* EventLoop::NextTimer() {
    LoopTimer* next = nullptr;
    for (LoopTimer* timer : Timers) {
        if (timer->Enabled() && (next == nullptr || timer->Due() < next->Due()))
            next = timer;
    }
    return next;
}

/// Fires the next timer that is due by `until`, with the clock at its due time. Returns true if one fired.
bool EventLoop::FireNext(std::int64_t until) {
    LoopTimer* timer = IsEnding ? nullptr : NextTimer();
    if (timer == nullptr || timer->Due() > until)
        return false;
    Time.MoveTo(timer->Due());
    timer->Fire(Time.Milliseconds());
    return true;
}

bool EventLoop::RaiseRound() {
    if (Begins)
        Begins();
    bool any = FireNext(Time.Milliseconds());
    for (EventSource* source : Sources) {
        if (IsEnding)
            return false;
        any = source->RaiseWhatIsPending() || any;
    }
    return any;
}

EventLoop::Round EventLoop::HandleRound() {
    const bool raised = RaiseRound();
    return {raised, !IsEnding && PumpOfLoop.HandlePending()};
}

bool EventLoop::HandleDue() {
    bool any = false;
    const std::int64_t start = Time.Milliseconds();
    int windowAlone = 0; // rounds in which only the window system had something
    for (int rounds = 0; rounds < MostRounds && windowAlone < MostWindowRounds; ++rounds) {
        const Round round = HandleRound();
        if (!round.Raised && !round.WindowHad)
            break;
        any = true;
        if (TakesLong(start))
            break;
        windowAlone = round.Raised ? 0 : windowAlone + 1;
    }
    return any;
}

std::vector<int> EventLoop::Descriptors() const {
    std::vector<int> all;
    for (EventSource* source : Sources) {
        if (source->Descriptor() >= 0)
            all.push_back(source->Descriptor());
    }
    return all;
}

std::optional<std::int64_t> EventLoop::TimeToNextTick() {
    const LoopTimer* next = Time.IsVirtual() ? nullptr : NextTimer();
    if (next == nullptr)
        return std::nullopt;
    return std::max<std::int64_t>(next->Due() - Time.Milliseconds(), 0);
}

void EventLoop::Sleep(std::optional<std::int64_t> deadline, bool forCommands) {
    std::vector<int> descriptors = Descriptors();
    const int commands = forCommands ? Commands.Descriptor() : -1;
    if (commands >= 0)
        descriptors.push_back(commands);
    std::optional<std::int64_t> time = TimeToNextTick();
    if (deadline) {
        const std::int64_t left = std::max<std::int64_t>(*deadline - Time.Milliseconds(), 0);
        time = std::min(time.value_or(left), left);
    }
    PumpOfLoop.Sleep(descriptors, time ? static_cast<int>(std::min(*time, LongestSleep)) : -1);
    if (commands >= 0 && CanBeRead(commands))
        Commands.TakeInput();
}

void EventLoop::Leave(const ProgramOver& over) {
    PumpOfLoop.Leave(over);
    std::abort(); // Pump::Leave must not return
}

/// With a virtual clock nothing may depend on the speed of the machine.
bool EventLoop::TakesLong(std::int64_t since) const {
    return !Time.IsVirtual() && Time.Milliseconds() - since >= LongestWithoutBreak;
}

/// True if there is something to handle before the next command. Commands get their turn even when events never stop.
bool EventLoop::IsBusy(const Round& round) {
    if (!round.Raised) {
        RoundsInARow = 0;
        return round.WindowHad;
    }
    if (RoundsInARow == 0)
        BusySince = Time.Milliseconds();
    if (++RoundsInARow < MostRounds && !TakesLong(BusySince))
        return true;
    RoundsInARow = 0;
    return false;
}

void EventLoop::FinishEnding() {
    if (LastAct)
        LastAct();
    Leave({ProgramOver::Reason::Ended, {}});
}

void EventLoop::WaitOnce() {
    if (IsEnding && Nesting == 0)
        FinishEnding();
    const Round round = HandleRound();
    if (IsEnding || IsBusy(round))
        return;
    Commands.AboutToWait(Nesting);
    if (Commands.HasCommand())
        Commands.RunCommand();
    else if (Commands.Ended())
        Leave({ProgramOver::Reason::InputEnded, {}});
    else
        Sleep(round.Raised ? std::optional(Time.Milliseconds()) : std::nullopt, true);
}

void EventLoop::WaitNested() {
    struct Deeper {
        int& Depth;
        explicit Deeper(int& depth) : Depth(depth) { ++Depth; }
        ~Deeper() { --Depth; }
    };
    const Deeper deeper(Nesting);
    WaitOnce();
}

void EventLoop::PassTime(std::int64_t milliseconds) {
    const std::int64_t until = Time.Milliseconds() + milliseconds;
    if (Time.IsVirtual()) {
        while (FireNext(until))
            HandleDue();
        Time.MoveTo(until);
        return;
    }
    for (HandleDue(); !IsEnding && Time.Milliseconds() < until; HandleDue())
        Sleep(until, false);
}

// The caller waits for an answer that will not come, and returning to it is not safe: a prompt that is left takes the
// last accepted answer, which would rename a download or choose another port.
void LoopRunTime::WaitEvents() {
    if (Loop.Ending())
        Loop.FinishEnding();
    Loop.WaitNested();
}

void LoopRunTime::EndProgram() {
    Loop.Leave({ProgramOver::Reason::Ended, {}});
}

void LoopRunTime::RuntimeFailure(const Text& text) {
    Loop.Leave({ProgramOver::Reason::Failed, text});
}

} // namespace backends
