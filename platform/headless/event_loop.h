// SPDX-License-Identifier: MIT
// The event loop: timers, what comes over the serial port, and whoever gives commands. A message box or a prompt that
// waits runs it again inside itself.
#pragma once

#include "platform/headless/clock.h"
#include "view/platform/controls.h"
#include "view/platform/run_time.h"

#include <functional>
#include <vector>

namespace platform::headless {

class EventLoop;

/// A timer of the form; its tick is raised by the loop.
class HeadlessTimer final : public Timer {
public:
    HeadlessTimer(EventLoop& loop, std::int32_t interval, bool enabled, void (*tick)());
    HeadlessTimer(const HeadlessTimer&) = delete;
    HeadlessTimer& operator=(const HeadlessTimer&) = delete;

    bool Enabled() const override { return Running; }
    void SetEnabled(bool enabled) override;
    std::int32_t Interval() const override { return Every; }
    void SetInterval(std::int32_t milliseconds) override;

    std::int64_t Due() const { return NextTick; }
    void Fire(std::int64_t now);

private:
    EventLoop& Loop;
    std::int32_t Every;
    bool Running = false;
    std::int64_t NextTick = 0; ///< by the clock's milliseconds
    void (*Tick)();
};

/// Where the loop's commands come from.
class CommandSource {
public:
    virtual ~CommandSource() = default;
    /// The loop has nothing else to do: `nesting` is the number of boxes and prompts that wait.
    virtual void AboutToWait(int nesting) = 0;
    virtual bool HasCommand() = 0; ///< one can be run without waiting for it
    virtual bool Ended() = 0;      ///< there will be no more
    virtual int Descriptor() = 0;  ///< to wait for more; -1 for none
    virtual void TakeInput() = 0;  ///< the descriptor is ready
    virtual void RunCommand() = 0;
};

/// A device that the loop listens to.
class EventSource {
public:
    virtual ~EventSource() = default;
    virtual int Descriptor() = 0;          ///< -1 while there is nothing to wait for
    virtual bool RaiseWhatIsPending() = 0; ///< whether an event was raised
};

/// What unwinds the program to the one that runs the loop. Nothing else catches it.
struct ProgramOver {
    enum class Reason { Ended, Failed, InputEnded, CommandFailed } Why = Reason::Ended;
    Text Failure;
};

class EventLoop {
public:
    EventLoop(HeadlessClock& clock, CommandSource& commands) : Time(clock), Commands(commands) {}

    HeadlessClock& ClockOfLoop() { return Time; }
    void Add(HeadlessTimer& timer) { Timers.push_back(&timer); }
    void Listen(EventSource& source) { Sources.push_back(&source); }

    /// Raises all events that are due, in time order.
    bool HandleDue();
    /// Handles what is due, or waits for the next thing to happen and handles that. The end of the commands ends the
    /// program.
    void WaitOnce();
    /// WaitOnce for a box or a prompt.
    void WaitNested();
    /// Lets this much time pass, with its events but without further commands.
    void PassTime(std::int64_t milliseconds);
    /// Moves a virtual clock on at once; timers that fell due meanwhile fire once when they are next looked at.
    void Jump(std::int64_t milliseconds) { Time.MoveTo(Time.Milliseconds() + milliseconds); }

private:
    HeadlessTimer* NextTimer();
    bool FireNext(std::int64_t until);
    void Sleep(std::int64_t deadline, bool forCommands);

    HeadlessClock& Time;
    CommandSource& Commands;
    std::vector<HeadlessTimer*> Timers;
    std::vector<EventSource*> Sources;
    int Nesting = 0;
};

/// The run-time's part of the seam.
class HeadlessRunTime final : public RunTime {
public:
    explicit HeadlessRunTime(EventLoop& loop) : Loop(loop) {}
    void DoEvents() override { Loop.HandleDue(); }
    void WaitEvents() override { Loop.WaitNested(); }
    [[noreturn]] void EndProgram() override;
    [[noreturn]] void RuntimeFailure(const Text& text) override;

private:
    EventLoop& Loop;
};

} // namespace platform::headless
