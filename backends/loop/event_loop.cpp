// SPDX-License-Identifier: MIT
#include "backends/loop/event_loop.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace backends {

namespace {

constexpr std::int64_t LongestSleep = 60000; // milliseconds; a pump takes an int

/// A window may always have something to handle: a caret blinks, and a long text may take longer to paint than one
/// blink.
constexpr int MostWindowRounds = 3;

/// The same is true of a flooded line, and of a timer whose tick takes longer than its interval. Everything else needs
/// far fewer rounds at a time.
constexpr int MostRounds = 16;

/// Rounds with much to do may still take long together. In milliseconds; commands and the window wait no longer than
/// this and one more round.
constexpr std::int64_t LongestWithoutBreak = 100;

} // namespace

LoopTimer::LoopTimer(EventLoop& loop, std::int32_t interval, bool enabled, void (*tick)())
    : Loop_(loop), Interval_(interval), Tick_(tick) {
    loop.Add(*this);
    LoopTimer::SetEnabled(enabled);
}

void LoopTimer::SetEnabled(bool enabled) {
    if (enabled && !Running_)
        NextTick_ = Loop_.Clock().Milliseconds() + Interval_;
    Running_ = enabled;
}

void LoopTimer::SetInterval(std::int32_t milliseconds) {
    if (milliseconds == Interval_)
        return;
    Interval_ = milliseconds;
    NextTick_ = Loop_.Clock().Milliseconds() + Interval_;
}

/// The next tick is set first, because the timer goes on while a handler waits. Missed ticks are raised as one. A held
/// tick does not stay due, or the loop would find it again at once and never sleep.
void LoopTimer::Fire(std::int64_t now) {
    NextTick_ += Interval_;
    if (NextTick_ <= now)
        NextTick_ = now + Interval_;
    if (!Held || !Held())
        Tick_();
}

LoopTimer* EventLoop::NextTimer() {
    LoopTimer* next = nullptr;
    for (LoopTimer* timer : Timers_) {
        if (timer->Enabled() && (next == nullptr || timer->Due() < next->Due()))
            next = timer;
    }
    return next;
}

/// Fires the next timer that is due by `until`, with the clock at its due time. Returns true if one fired.
bool EventLoop::FireNext(std::int64_t until) {
    LoopTimer* timer = Ending_ ? nullptr : NextTimer();
    if (timer == nullptr || timer->Due() > until)
        return false;
    Clock_.MoveTo(timer->Due());
    timer->Fire(Clock_.Milliseconds());
    return true;
}

bool EventLoop::RaiseRound() {
    if (Begins)
        Begins();
    bool any = FireNext(Clock_.Milliseconds());
    for (EventSource* source : Sources_) {
        if (Ending_)
            return false;
        any = source->RaiseWhatIsPending() || any;
    }
    return any;
}

EventLoop::Round EventLoop::HandleRound() {
    const bool raised = RaiseRound();
    return {raised, !Ending_ && Pump_.HandlePending()};
}

bool EventLoop::HandleDue() {
    bool any = false;
    const std::int64_t start = Clock_.Milliseconds();
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

std::optional<std::int64_t> EventLoop::TimeToNextTick() {
    const LoopTimer* next = Clock_.IsVirtual() ? nullptr : NextTimer();
    if (next == nullptr)
        return std::nullopt;
    return std::max<std::int64_t>(next->Due() - Clock_.Milliseconds(), 0);
}

void EventLoop::Sleep(std::optional<std::int64_t> deadline, Wake wake) {
    std::optional<std::int64_t> time = TimeToNextTick();
    if (deadline) {
        const std::int64_t left = std::max<std::int64_t>(*deadline - Clock_.Milliseconds(), 0);
        time = std::min(time.value_or(left), left);
    }
    Pump_.Sleep(time ? static_cast<int>(std::min(*time, LongestSleep)) : -1, wake);
    if (wake == Wake::ByCommandsToo)
        Commands_.TakeInput();
}

void EventLoop::Leave(const ProgramOver& over) {
    Pump_.Leave(over);
    std::abort(); // Pump::Leave must not return
}

/// With a virtual clock nothing may depend on the speed of the machine.
bool EventLoop::TakesLong(std::int64_t since) const {
    return !Clock_.IsVirtual() && Clock_.Milliseconds() - since >= LongestWithoutBreak;
}

/// True if there is something to handle before the next command. Commands get their turn even when events never stop.
bool EventLoop::IsBusy(const Round& round) {
    if (!round.Raised) {
        RoundsInARow_ = 0;
        return round.WindowHad;
    }
    if (RoundsInARow_ == 0)
        BusySince_ = Clock_.Milliseconds();
    if (++RoundsInARow_ < MostRounds && !TakesLong(BusySince_))
        return true;
    RoundsInARow_ = 0;
    return false;
}

void EventLoop::FinishEnding() {
    if (LastAct)
        LastAct();
    Leave({ProgramOver::Reason::Ended, {}});
}

void EventLoop::WaitOnce() {
    if (Ending_ && Nesting_ == 0)
        FinishEnding();
    const Round round = HandleRound();
    if (Ending_ || IsBusy(round))
        return;
    Commands_.AboutToWait(Nesting_);
    if (Commands_.HasCommand())
        Commands_.RunCommand();
    else if (Commands_.Ended())
        Leave({ProgramOver::Reason::InputEnded, {}});
    else
        Sleep(round.Raised ? std::optional(Clock_.Milliseconds()) : std::nullopt, Wake::ByCommandsToo);
}

void EventLoop::WaitNested() {
    struct Deeper {
        int& Depth;
        explicit Deeper(int& depth) : Depth(depth) { ++Depth; }
        ~Deeper() { --Depth; }
    };
    const Deeper deeper(Nesting_);
    WaitOnce();
}

void EventLoop::PassTime(std::int64_t milliseconds) {
    const std::int64_t until = Clock_.Milliseconds() + milliseconds;
    if (Clock_.IsVirtual()) {
        while (FireNext(until))
            HandleDue();
        Clock_.MoveTo(until);
        return;
    }
    for (HandleDue(); !Ending_ && Clock_.Milliseconds() < until; HandleDue())
        Sleep(until, Wake::ByEvents);
}

// The caller waits for an answer that will not come, and returning to it is not safe: a prompt that is left takes the
// last accepted answer, which would rename a download or choose another port.
void LoopRunTime::WaitEvents() {
    if (Loop_.Ending())
        Loop_.FinishEnding();
    Loop_.WaitNested();
}

void LoopRunTime::EndProgram() {
    Loop_.Leave({ProgramOver::Reason::Ended, {}});
}

void LoopRunTime::RuntimeFailure(const Text& text) {
    if (const auto last = std::exchange(Failing, nullptr)) // it may fail itself
        last();
    Loop_.Leave({ProgramOver::Reason::Failed, text});
}

} // namespace backends
