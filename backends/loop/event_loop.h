// SPDX-License-Identifier: MIT
// The event loop: timers, event sources such as the serial port, and commands. A message box or a prompt that waits
// runs the loop nested.
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

/// A timer of the form. The loop raises its tick.
class LoopTimer final : public Timer {
public:
    LoopTimer(EventLoop& loop, std::int32_t interval, bool enabled, void (*tick)());
    LoopTimer(const LoopTimer&) = delete;
    LoopTimer& operator=(const LoopTimer&) = delete;

    bool Enabled() const override { return Running_; }
    void SetEnabled(bool enabled) override;
    void SetInterval(std::int32_t milliseconds) override;
    std::int32_t Interval() const { return Interval_; } ///< milliseconds

    /// While this returns true, ticks pass without their event.
    std::function<bool()> Held;

    std::int64_t Due() const { return NextTick_; }
    void Fire(std::int64_t now);

private:
    EventLoop& Loop_;
    std::int32_t Interval_;
    bool Running_ = false;
    std::int64_t NextTick_ = 0; ///< in the clock's milliseconds
    void (*Tick_)();
};

/// Where the loop's commands come from.
class CommandSource {
public:
    virtual ~CommandSource() = default;
    /// Called when the loop has nothing else to do. `nesting` is the number of boxes and prompts that wait.
    virtual void AboutToWait(int nesting) = 0;
    virtual bool HasCommand() = 0; ///< a command can be run without waiting
    virtual bool Ended() = 0;      ///< no more commands will come
    virtual void TakeInput() = 0;  ///< called after a sleep: takes what has arrived, without waiting for more
    virtual void RunCommand() = 0;
};

/// A device that the loop listens to: it is asked in each round. What wakes the loop from its sleep for it is up to the
/// pump.
class EventSource {
public:
    virtual ~EventSource() = default;
    virtual bool RaiseWhatIsPending() = 0; ///< true if an event was raised
};

/// Why the program has ended.
struct ProgramOver {
    enum class Reason { Ended, Failed, InputEnded, CommandFailed } Why = Reason::Ended;
    Text Failure;
};

/// What ends a sleep before its time.
enum class Wake { ByEvents, ByCommandsToo };

/// How a back-end sleeps and how it leaves the program.
class Pump {
public:
    virtual ~Pump() = default;
    /// Handles the pending events of the window system. Returns true if there were any.
    virtual bool HandlePending() = 0;
    /// Sleeps until a source may have an event, the window system has one, a command may have arrived (if `wake` says
    /// so), or this many milliseconds have passed; -1 means no limit. May return sooner.
    virtual void Sleep(int milliseconds, Wake wake) = 0;
    /// Unwinds to the caller of the loop, or ends the process.
    [[noreturn]] virtual void Leave(const ProgramOver& over) = 0;
};

class EventLoop {
public:
    EventLoop(DeviceClock& clock, CommandSource& commands, Pump& pump)
        : Clock_(clock), Commands_(commands), Pump_(pump) {}

    /// Called before each round.
    std::function<void()> Begins;

    DeviceClock& Clock() { return Clock_; }
    void Add(LoopTimer& timer) { Timers_.push_back(&timer); }
    void Listen(EventSource& source) { Sources_.push_back(&source); }

    /// Raises all events that are due, in time order, and handles those of the window system. Stops after a limited
    /// number of rounds, even if each event causes another. Returns true if there was any event.
    bool HandleDue();
    /// Raises the next timer's event if it is due, and lets each source raise one: a source that always has more can't
    /// hold up the others. Returns true if there was any event.
    bool RaiseRound();
    /// Handles what is due, or waits for the next event and handles it. Ends the program when there are no more
    /// commands.
    void WaitOnce();
    /// WaitOnce, called from inside a message box or a prompt.
    void WaitNested();
    /// Lets this much time pass, with its events but without running commands.
    void PassTime(std::int64_t milliseconds);
    /// Moves a virtual clock forward at once. A timer that became due meanwhile fires once, in the next round.
    void Jump(std::int64_t milliseconds) { Clock_.MoveTo(Clock_.Milliseconds() + milliseconds); }
    [[noreturn]] void Leave(const ProgramOver& over);

    /// Marks the program as ending, for a reason outside of it. This is a state and not a call, because handlers may
    /// wait on the stack: from now on no event is raised and no command is run, boxes answer themselves, and nested
    /// loops return to their callers, down to the outermost level.
    void BeginEnding() { Ending_ = true; }
    bool Ending() const { return Ending_; }
    /// What remains to be done at the outermost level.
    std::function<void()> LastAct;
    [[noreturn]] void FinishEnding();

    /// Returns the milliseconds until the next timer is due; nothing while no timer runs or the clock is virtual.
    std::optional<std::int64_t> TimeToNextTick();

private:
    struct Round {
        bool Raised;    ///< an event was raised
        bool WindowHad; ///< the window system had something to handle
    };

    Round HandleRound();
    bool IsBusy(const Round& round);
    bool TakesLong(std::int64_t since) const;
    LoopTimer* NextTimer();
    bool FireNext(std::int64_t until);
    void Sleep(std::optional<std::int64_t> deadline, Wake wake);

    DeviceClock& Clock_;
    CommandSource& Commands_;
    Pump& Pump_;
    std::vector<LoopTimer*> Timers_;
    std::vector<EventSource*> Sources_;
    int Nesting_ = 0;
    bool Ending_ = false;
    std::int64_t BusySince_ = 0; ///< in the clock's milliseconds
    int RoundsInARow_ = 0;       ///< number of rounds that raised something, with no command between them
};

/// The platform's RunTime, over the event loop.
class LoopRunTime final : public RunTime {
public:
    explicit LoopRunTime(EventLoop& loop) : Loop_(loop) {}
    void DoEvents() override { Loop_.HandleDue(); }
    void Pause(std::int32_t milliseconds) override { Rest(milliseconds); }
    /// Sleeps this long. A back-end that paints by itself replaces it and paints meanwhile.
    std::function<void(std::int32_t milliseconds)> Rest = [](std::int32_t milliseconds) {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    };
    /// Called before a failure ends the program.
    std::function<void()> Failing;
    void WaitEvents() override;
    [[noreturn]] void EndProgram() override;
    [[noreturn]] void RuntimeFailure(const Text& text) override;

private:
    EventLoop& Loop_;
};

} // namespace backends
