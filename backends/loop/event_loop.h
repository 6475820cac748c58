// SPDX-License-Identifier: MIT
// The event loop: timers, what comes over the serial port, and whoever gives commands. A message box or a prompt that
// waits runs it again inside itself.
#pragma once

#include "backends/loop/clock.h"
#include "src/view/platform/controls.h"
#include "src/view/platform/run_time.h"

#include <chrono>
#include <functional>
#include <optional>
#include <thread>
#include <vector>

namespace backends {

using namespace platform;

class EventLoop;

/// A timer of the form; its tick is raised by the loop.
class LoopTimer final : public Timer {
public:
    LoopTimer(EventLoop& loop, std::int32_t interval, bool enabled, void (*tick)());
    LoopTimer(const LoopTimer&) = delete;
    LoopTimer& operator=(const LoopTimer&) = delete;

    bool Enabled() const override { return Running; }
    void SetEnabled(bool enabled) override;
    void SetInterval(std::int32_t milliseconds) override;
    std::int32_t Interval() const { return Every; } ///< milliseconds

    /// While this holds a tick passes without its event.
    std::function<bool()> Held;

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

/// Why the program is over.
struct ProgramOver {
    enum class Reason { Ended, Failed, InputEnded, CommandFailed } Why = Reason::Ended;
    Text Failure;
};

/// How a back-end sleeps, and how it leaves the program.
class Pump {
public:
    virtual ~Pump() = default;
    /// Handles what the window system has for the back-end; whether there was anything.
    virtual bool HandlePending() = 0;
    /// Sleeps until one of the descriptors can be read, the window system has something, or so many milliseconds have
    /// passed, -1 for any number of them. It may come back sooner.
    virtual void Sleep(const std::vector<int>& descriptors, int milliseconds) = 0;
    /// Unwinds to whoever runs the loop, or ends the process.
    [[noreturn]] virtual void Leave(const ProgramOver& over) = 0;
};

class EventLoop {
public:
    EventLoop(DeviceClock& clock, CommandSource& commands, Pump& pump)
        : Time(clock), Commands(commands), PumpOfLoop(pump) {}

    /// Called before anything is raised: whatever follows has its own time to take.
    std::function<void()> Begins;

    DeviceClock& ClockOfLoop() { return Time; }
    void Add(LoopTimer& timer) { Timers.push_back(&timer); }
    void Listen(EventSource& source) { Sources.push_back(&source); }

    /// Raises all events that are due, in time order, and handles what the window system has. It comes to an end, too,
    /// where one event follows on the other for ever. Whether there was anything.
    bool HandleDue();
    /// Raises the next timer's event, if it is due, and lets each source raise one: a source that never runs dry can't
    /// hold up the others. Whether there was anything.
    bool RaiseRound();
    /// Handles what is due, or waits for the next thing to happen and handles that. The end of the commands ends the
    /// program.
    void WaitOnce();
    /// WaitOnce for a box or a prompt.
    void WaitNested();
    /// Lets this much time pass, with its events but without further commands.
    void PassTime(std::int64_t milliseconds);
    /// Moves a virtual clock on at once; timers that fell due meanwhile fire once when they are next looked at.
    void Jump(std::int64_t milliseconds) { Time.MoveTo(Time.Milliseconds() + milliseconds); }
    [[noreturn]] void Leave(const ProgramOver& over);

    /// The program is to end, by somebody outside of it. That is a state and not a call, for handlers may wait on the
    /// stack: from now on no event is raised and no command is run, boxes answer themselves, and what waits comes back
    /// to whoever called it, down to the outermost level.
    void BeginEnding() { IsEnding = true; }
    bool Ending() const { return IsEnding; }
    /// What is left to be done there.
    std::function<void()> LastAct;
    [[noreturn]] void FinishEnding();

    /// The descriptors of all sources that have one.
    std::vector<int> Descriptors() const;
    /// Milliseconds until the next timer falls due by itself; none while no timer runs or time stands still.
    std::optional<std::int64_t> TimeToNextTick();

private:
    struct Round {
        bool Raised;    ///< an event
        bool WindowHad; ///< something to handle
    };

    Round HandleRound();
    bool IsBusy(const Round& round);
    bool TakesLong(std::int64_t since) const;
    LoopTimer* NextTimer();
    bool FireNext(std::int64_t until);
    void Sleep(std::optional<std::int64_t> deadline, bool forCommands);

    DeviceClock& Time;
    CommandSource& Commands;
    Pump& PumpOfLoop;
    std::vector<LoopTimer*> Timers;
    std::vector<EventSource*> Sources;
    int Nesting = 0;
    bool IsEnding = false;
    std::int64_t BusySince = 0; ///< by the clock's milliseconds
    int RoundsInARow = 0;       ///< that have raised something, without a command between them
};

/// The run-time's part of the seam.
class LoopRunTime final : public RunTime {
public:
    explicit LoopRunTime(EventLoop& loop) : Loop(loop) {}
    void DoEvents() override { Loop.HandleDue(); }
    void Pause(std::int32_t milliseconds) override { Rest(milliseconds); }
    /// Sleeps so long. A back-end that paints by itself does that meanwhile.
    std::function<void(std::int32_t milliseconds)> Rest = [](std::int32_t milliseconds) {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    };
    void WaitEvents() override;
    [[noreturn]] void EndProgram() override;
    [[noreturn]] void RuntimeFailure(const Text& text) override;

private:
    EventLoop& Loop;
};

} // namespace backends
