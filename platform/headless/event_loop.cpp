// SPDX-License-Identifier: MIT
#include "platform/headless/event_loop.h"

#include <algorithm>
#include <limits>
#include <poll.h>

namespace platform::headless {

namespace {

constexpr std::int64_t Never = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t LongestSleep = 60000; // milliseconds at a time, which poll can count

} // namespace

HeadlessTimer::HeadlessTimer(EventLoop& loop, std::int32_t interval, bool enabled, void (*tick)())
    : Loop(loop), Every(interval), Tick(tick) {
    loop.Add(*this);
    HeadlessTimer::SetEnabled(enabled);
}

void HeadlessTimer::SetEnabled(bool enabled) {
    if (enabled && !Running)
        NextTick = Loop.ClockOfLoop().Milliseconds() + Every;
    Running = enabled;
}

void HeadlessTimer::SetInterval(std::int32_t milliseconds) {
    if (milliseconds == Every)
        return;
    Every = milliseconds;
    NextTick = Loop.ClockOfLoop().Milliseconds() + Every;
}

/// The next tick is set first: a handler that waits lets the timer go on. Ticks that were missed are one.
void HeadlessTimer::Fire(std::int64_t now) {
    NextTick += Every;
    if (NextTick <= now)
        NextTick = now + Every;
    Tick();
}

HeadlessTimer* EventLoop::NextTimer() {
    HeadlessTimer* next = nullptr;
    for (HeadlessTimer* timer : Timers) {
        if (timer->Enabled() && (next == nullptr || timer->Due() < next->Due()))
            next = timer;
    }
    return next;
}

/// Fires the next timer that is due by then, with the clock at its moment.
bool EventLoop::FireNext(std::int64_t until) {
    HeadlessTimer* timer = NextTimer();
    if (timer == nullptr || timer->Due() > until)
        return false;
    Time.MoveTo(timer->Due());
    timer->Fire(Time.Milliseconds());
    return true;
}

bool EventLoop::HandleDue() {
    bool any = false;
    for (bool more = true; more;) {
        more = FireNext(Time.Milliseconds());
        for (EventSource* source : Sources)
            more = source->RaiseWhatIsPending() || more;
        any = any || more;
    }
    return any;
}

void EventLoop::Sleep(std::int64_t deadline, bool forCommands) {
    std::vector<pollfd> waiting;
    for (EventSource* source : Sources) {
        if (source->Descriptor() >= 0)
            waiting.push_back({source->Descriptor(), POLLIN, 0});
    }
    if (forCommands && Commands.Descriptor() >= 0)
        waiting.push_back({Commands.Descriptor(), POLLIN, 0});
    if (!Time.IsVirtual() && NextTimer() != nullptr)
        deadline = std::min(deadline, NextTimer()->Due());
    int timeout = -1;
    if (deadline != Never)
        timeout = static_cast<int>(std::clamp<std::int64_t>(deadline - Time.Milliseconds(), 0, LongestSleep));
    ::poll(waiting.data(), waiting.size(), timeout);
    if (forCommands && !waiting.empty() && waiting.back().fd == Commands.Descriptor() && waiting.back().revents != 0)
        Commands.TakeInput();
}

void EventLoop::WaitOnce() {
    if (HandleDue())
        return;
    Commands.AboutToWait(Nesting);
    if (Commands.HasCommand()) {
        Commands.RunCommand();
    } else if (Commands.Ended()) {
        throw ProgramOver{ProgramOver::Reason::InputEnded, {}};
    } else {
        Sleep(Never, true);
    }
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
    for (HandleDue(); Time.Milliseconds() < until; HandleDue())
        Sleep(until, false);
}

void HeadlessRunTime::EndProgram() {
    throw ProgramOver{ProgramOver::Reason::Ended, {}};
}

void HeadlessRunTime::RuntimeFailure(const Text& text) {
    throw ProgramOver{ProgramOver::Reason::Failed, text};
}

} // namespace platform::headless
