// SPDX-License-Identifier: MIT
#include "backends/headless/poll_pump.h"
#include "backends/host/host_clock.h"
#include "backends/loop/event_loop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <deque>
#include <unistd.h>

namespace backends {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Prepared commands. The input ends after the last one.
class ReadyCommands final : public CommandSource {
public:
    void AboutToWait(int nesting) override { Nestings.push_back(nesting); }
    bool HasCommand() override { return !Steps.empty(); }
    bool Ended() override { return true; }
    void TakeInput() override {}
    void RunCommand() override {
        const std::function<void()> step = Steps.front();
        Steps.pop_front();
        step();
    }
    std::deque<std::function<void()>> Steps;
    std::vector<int> Nestings; ///< the nesting depth at each wait
};

class PendingEvents final : public EventSource {
public:
    bool RaiseWhatIsPending() override {
        if (Pending == 0)
            return false;
        --Pending;
        Raise();
        return true;
    }
    int Pending = 0;
    std::function<void()> Raise = [] {};
};

std::array<std::function<void()>, 3> OnTick; ///< the handlers of the running test's timers

template <std::size_t Which>
void Tick() {
    OnTick[Which]();
}

/// Three timers that are off. Each records its ticks with the time.
class Loop : public testing::Test {
protected:
    Loop() {
        for (std::size_t i = 0; i < OnTick.size(); ++i)
            OnTick[i] = [this, i] { Tell(i); };
    }
    void Tell(std::size_t timer) {
        Ticks.push_back(std::string(1, static_cast<char>('A' + timer)) + std::to_string(Time.Milliseconds()));
    }
    void Start(LoopTimer& timer, std::int32_t interval) {
        timer.SetInterval(interval);
        timer.SetEnabled(true);
    }
    std::vector<std::string> TicksIn(std::int64_t milliseconds) {
        Ticks.clear();
        Events.PassTime(milliseconds);
        return Ticks;
    }
    static ProgramOver::Reason EndOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const ProgramOver& over) {
            return over.Why;
        }
        ADD_FAILURE() << "the program goes on";
        return {};
    }

    DeviceClock Time{0};
    ReadyCommands Commands;
    headless::PollPump Pump;
    EventLoop Events{Time, Commands, Pump};
    LoopTimer A{Events, 1000, false, Tick<0>};
    LoopTimer B{Events, 1000, false, Tick<1>};
    LoopTimer C{Events, 1000, false, Tick<2>};
    std::vector<std::string> Ticks; ///< the timer and the time in milliseconds
};

TEST_F(Loop, FiresTimersInTheOrderOfTime) {
    Start(A, 300);
    Start(B, 200);
    EXPECT_THAT(TicksIn(1000), ElementsAre("B200", "A300", "B400", "A600", "B600", "B800", "A900", "B1000"));
    EXPECT_EQ(Time.Milliseconds(), 1000);
}

TEST_F(Loop, FiresNoTimerBeforeItsTime) {
    Start(A, 500);
    EXPECT_THAT(TicksIn(499), IsEmpty());
    EXPECT_THAT(TicksIn(1), ElementsAre("A500"));
    EXPECT_THAT(TicksIn(0), IsEmpty());
    EXPECT_THAT(TicksIn(500), ElementsAre("A1000"));
}

TEST_F(Loop, StartsAWholeIntervalWhenATimerIsEnabled) {
    Events.PassTime(900);
    Start(A, 1000);
    EXPECT_THAT(TicksIn(999), IsEmpty());
    EXPECT_THAT(TicksIn(1), ElementsAre("A1900"));
    A.SetEnabled(false);
    Events.PassTime(300);
    A.SetEnabled(true);
    EXPECT_THAT(TicksIn(1000), ElementsAre("A3200"));
}

TEST_F(Loop, IsNotToldAnewWhenARunningTimerIsEnabledAgain) {
    Start(A, 1000);
    Events.PassTime(600);
    A.SetEnabled(true);
    A.SetInterval(1000);
    EXPECT_THAT(TicksIn(400), ElementsAre("A1000"));
}

TEST_F(Loop, BeginsAnotherIntervalAtOnce) {
    Start(A, 1000);
    Events.PassTime(600);
    A.SetInterval(100);
    EXPECT_THAT(TicksIn(250), ElementsAre("A700", "A800"));
}

TEST_F(Loop, FiresATimerThatAHandlerEnabled) {
    OnTick[0] = [this] {
        Tell(0);
        A.SetEnabled(false);
        Start(B, 50);
    };
    Start(A, 100);
    EXPECT_THAT(TicksIn(200), ElementsAre("A100", "B150", "B200"));
}

TEST_F(Loop, FiresNoTimerThatAHandlerDisabled) {
    OnTick[0] = [this] {
        Tell(0);
        B.SetEnabled(false);
    };
    Start(A, 100);
    Start(B, 100);
    EXPECT_THAT(TicksIn(150), ElementsAre("A100"));
}

TEST_F(Loop, FiresEachTimerThatFellDueDuringAJumpOnceInItsOrder) {
    Start(A, 300);
    Start(B, 200);
    Start(C, 9000);
    Events.Jump(5000);
    EXPECT_THAT(Ticks, IsEmpty());
    EXPECT_TRUE(Events.HandleDue());
    EXPECT_THAT(Ticks, ElementsAre("B5000", "A5000"));
    EXPECT_FALSE(Events.HandleDue());
    EXPECT_THAT(TicksIn(300), ElementsAre("B5200", "A5300"));
}

TEST_F(Loop, SkipsAHeldTickAndHasTheNextDueAnIntervalLater) {
    bool held = true;
    A.Held = [&held] { return held; };
    Start(A, 500);
    Start(B, 700);
    EXPECT_THAT(TicksIn(1400), ElementsAre("B700", "B1400"));
    EXPECT_EQ(A.Due(), 1500) << "one that is left due keeps the loop awake";
    Events.Jump(5000);
    EXPECT_THAT(TicksIn(0), ElementsAre("B6400"));
    EXPECT_EQ(A.Due(), 6900);
    held = false;
    EXPECT_THAT(TicksIn(500), ElementsAre("A6900"));
}

TEST_F(Loop, LetsTimersGoOnWhileAHandlerWaits) {
    Commands.Steps = {[this] { Events.PassTime(250); }};
    OnTick[0] = [this] {
        Tell(0);
        if (Ticks.size() == 1)
            Events.WaitNested();
        Ticks.emplace_back("back");
    };
    Start(A, 100);
    EXPECT_THAT(TicksIn(150), ElementsAre("A100", "A200", "back", "A300", "back", "back"));
    EXPECT_EQ(Time.Milliseconds(), 350);
}

TEST_F(Loop, CountsTheWaitsThatStandInsideOneAnother) {
    Commands.Steps = {[this] { Events.WaitNested(); }, [this] { Events.WaitNested(); }, [] {}, [] {}};
    Events.WaitOnce();
    Events.WaitOnce();
    EXPECT_THAT(Commands.Nestings, ElementsAre(0, 1, 2, 0));
}

TEST_F(Loop, ForgetsTheWaitsThatTheEndOfTheProgramLeft) {
    LoopRunTime program(Events);
    Commands.Steps = {[&] { program.WaitEvents(); }, [&] { program.EndProgram(); }, [] {}};
    EXPECT_EQ(EndOf([this] { Events.WaitOnce(); }), ProgramOver::Reason::Ended);
    Events.WaitOnce();
    EXPECT_THAT(Commands.Nestings, ElementsAre(0, 1, 0));
}

TEST_F(Loop, HandlesWhatIsDueBeforeACommand) {
    Start(A, 100);
    Events.Jump(100);
    Commands.Steps = {[this] { Ticks.emplace_back("command"); }};
    Events.WaitOnce();
    EXPECT_THAT(Ticks, ElementsAre("A100"));
    Events.WaitOnce();
    EXPECT_THAT(Ticks, ElementsAre("A100", "command"));
}

TEST_F(Loop, EndsTheProgramWhenThereAreNoMoreCommands) {
    EXPECT_EQ(EndOf([this] { Events.WaitOnce(); }), ProgramOver::Reason::InputEnded);
    EXPECT_EQ(EndOf([this] { Events.WaitNested(); }), ProgramOver::Reason::InputEnded);
}

TEST_F(Loop, RaisesEverythingThatIsPending) {
    PendingEvents port;
    Events.Listen(port);
    port.Pending = 3;
    EXPECT_TRUE(Events.HandleDue());
    EXPECT_EQ(port.Pending, 0);
    EXPECT_FALSE(Events.HandleDue());
}

TEST_F(Loop, RaisesWhatATickLeavesPendingBeforeTheNextTick) {
    PendingEvents port;
    port.Raise = [this] { Ticks.push_back("port" + std::to_string(Time.Milliseconds())); };
    Events.Listen(port);
    OnTick[0] = [&] {
        Tell(0);
        ++port.Pending;
    };
    Start(A, 100);
    EXPECT_THAT(TicksIn(200), ElementsAre("A100", "port100", "A200", "port200"));
}

TEST_F(Loop, HandlesWhatIsPendingWithoutWaitOrCommand) {
    LoopRunTime program(Events);
    PendingEvents port;
    port.Pending = 2;
    Events.Listen(port);
    Commands.Steps = {[] {}};
    program.DoEvents();
    EXPECT_EQ(port.Pending, 0);
    EXPECT_EQ(Commands.Steps.size(), 1U);
}

/// A source that has its next event as soon as one is handled. It stops at a large number, so that a failed test ends.
class Flood final : public EventSource {
public:
    bool RaiseWhatIsPending() override { return Raised < FarTooMany && ++Raised > 0; }
    static constexpr int FarTooMany = 100000;
    int Raised = 0;
};

TEST_F(Loop, EndsItsHandlingUnderASourceThatNeverRunsDry) {
    Flood port;
    Events.Listen(port);
    EXPECT_TRUE(Events.HandleDue());
    EXPECT_GT(port.Raised, 1);
    EXPECT_LT(port.Raised, 100);
}

TEST_F(Loop, RunsACommandUnderASourceThatNeverRunsDry) {
    Flood port;
    Events.Listen(port);
    bool ran = false;
    Commands.Steps = {[&ran] { ran = true; }};
    while (!ran)
        Events.WaitOnce();
    EXPECT_LT(port.Raised, 100);
}

TEST_F(Loop, EndsAfterTheLastCommandUnderAnEndlessSource) {
    Flood port;
    Events.Listen(port);
    EXPECT_EQ(EndOf([this] {
                  for (;;)
                      Events.WaitOnce();
              }),
              ProgramOver::Reason::InputEnded);
    EXPECT_LT(port.Raised, 100);
}

TEST_F(Loop, FiresTimersUnderASourceThatNeverRunsDry) {
    Flood port;
    Events.Listen(port);
    Start(A, 100);
    EXPECT_THAT(TicksIn(250), ElementsAre("A100", "A200"));
}

TEST_F(Loop, RaisesNothingOnceTheProgramIsToEnd) {
    PendingEvents first;
    PendingEvents second;
    first.Pending = second.Pending = 3;
    first.Raise = [this] { Events.BeginEnding(); };
    Events.Listen(first);
    Events.Listen(second);
    Start(A, 100);
    Start(B, 200);
    EXPECT_THAT(TicksIn(500), ElementsAre("A100"));
    EXPECT_EQ(first.Pending, 2);
    EXPECT_EQ(second.Pending, 3);
    EXPECT_FALSE(Events.HandleDue());
}

TEST_F(Loop, RunsNoCommandOnceItIsToEndAndThenTheLastAct) {
    Commands.Steps = {[this] {
                          Events.BeginEnding();
                          Events.WaitNested();
                          Ticks.emplace_back("unwound");
                      },
                      [this] { Ticks.emplace_back("command"); }};
    Events.LastAct = [this] { Ticks.emplace_back("last act"); };
    Events.WaitOnce();
    EXPECT_THAT(Ticks, ElementsAre("unwound"));
    EXPECT_EQ(EndOf([this] { Events.WaitOnce(); }), ProgramOver::Reason::Ended);
    EXPECT_THAT(Ticks, ElementsAre("unwound", "last act"));
}

TEST_F(Loop, EndsInTheLoopOfAPromptWhichHasNoSafeSide) {
    LoopRunTime program(Events);
    Events.BeginEnding();
    EXPECT_EQ(EndOf([&] { program.WaitEvents(); }), ProgramOver::Reason::Ended);
}

TEST_F(Loop, CarriesTheMessageOfAFailureOut) {
    LoopRunTime program(Events);
    try {
        program.RuntimeFailure(u"no such row");
    } catch (const ProgramOver& over) {
        EXPECT_EQ(over.Why, ProgramOver::Reason::Failed);
        EXPECT_EQ(over.Failure, u"no such row");
    }
}

TEST(LoopOnTheMachinesClock, FiresTimersByItself) {
    DeviceClock time(HostTime());
    ReadyCommands commands;
    headless::PollPump pump;
    EventLoop loop(time, commands, pump);
    LoopTimer timer(loop, 20, true, Tick<0>);
    int ticks = 0;
    OnTick[0] = [&] { ++ticks; };
    while (ticks == 0)
        loop.PassTime(5);
    EXPECT_GE(time.Milliseconds(), 20);
    const std::int64_t before = time.Milliseconds();
    loop.PassTime(30);
    EXPECT_GE(time.Milliseconds(), before + 30);
}

TEST(LoopOnTheMachinesClock, IsNotHeldUpByATickThatTakesLongerThanItsInterval) {
    DeviceClock time(HostTime());
    ReadyCommands commands;
    headless::PollPump pump;
    EventLoop loop(time, commands, pump);
    LoopTimer timer(loop, 1, true, Tick<0>);
    constexpr int FarTooMany = 300;
    int ticks = 0;
    OnTick[0] = [&] {
        for (const std::int64_t start = time.Milliseconds(); time.Milliseconds() < start + 3;) {
        }
        if (++ticks == FarTooMany)
            timer.SetEnabled(false);
    };
    loop.PassTime(5);
    loop.HandleDue();
    EXPECT_LT(ticks, 100);
}

/// A source that always has an event, and whose events take long.
class SlowFlood final : public EventSource {
public:
    bool RaiseWhatIsPending() override {
        ++Raised;
        ::usleep(60000);
        return true;
    }
    int Raised = 0;
};

TEST(LoopOnTheMachinesClock, LeavesACommandItsTurnHoweverMuchEachEventHasToDo) {
    DeviceClock time(HostTime());
    ReadyCommands commands;
    headless::PollPump pump;
    EventLoop loop(time, commands, pump);
    SlowFlood port;
    loop.Listen(port);
    bool ran = false;
    commands.Steps = {[&ran] { ran = true; }};
    while (!ran)
        loop.WaitOnce();
    EXPECT_LT(port.Raised, 6);
    port.Raised = 0;
    loop.HandleDue();
    EXPECT_LT(port.Raised, 6);
}

} // namespace
} // namespace backends
