// SPDX-License-Identifier: MIT
#include "backends/qt/pump.h"

#include "backends/host/host_clock.h"
#include "backends/loop/no_commands.h"

#include <QEventLoop>
#include <QTimer>
#include <QWidget>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <functional>
#include <memory>
#include <poll.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace backends::qt {
namespace {

using Clock = std::chrono::steady_clock;

std::int64_t Since(Clock::time_point start) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count();
}

/// A pipe that can be made readable.
class Pipe {
public:
    Pipe() { EXPECT_EQ(::pipe(Ends_), 0); }
    ~Pipe() {
        ::close(Ends_[0]);
        ::close(Ends_[1]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    int Descriptor() const { return Ends_[0]; }
    void Write() const { EXPECT_EQ(::write(Ends_[1], "x", 1), 1); }
    void Read() const {
        char byte = 0;
        EXPECT_EQ(::read(Ends_[0], &byte, 1), 1);
    }

private:
    int Ends_[2] = {};
};

/// Raises an event for each byte of a pipe.
class BytesOf final : public EventSource, public Waitable {
public:
    explicit BytesOf(const Pipe& pipe) : From_(pipe) {}
    int Descriptor() const override { return From_.Descriptor(); }
    bool RaiseWhatIsPending() override {
        pollfd waiting{From_.Descriptor(), POLLIN, 0};
        if (::poll(&waiting, 1, 0) <= 0)
            return false;
        From_.Read();
        ++Count;
        return true;
    }
    int Count = 0;

private:
    const Pipe& From_;
};

int Ticks = 0;
void CountTick() {
    ++Ticks;
}

class PumpOfAWindow : public testing::Test {
protected:
    PumpOfAWindow() {
        Ticks = 0;
        Pump.Serve(Loop);
    }

    void Listen(BytesOf& bytes) {
        Loop.Listen(bytes);
        Pump.WakenBy(bytes);
    }

    QtPump Pump{[](const ProgramOver& over) { return over.Why == ProgramOver::Reason::Ended ? 0 : 7; }};
    DeviceClock Time{HostTime()};
    NoCommands Commands;
    EventLoop Loop{Time, Commands, Pump};
};

// Milliseconds; far longer than it takes until the pump is woken. A sleep of less than half of it was ended early,
// however busy the machine is.
constexpr int LongSleep = 60000;

TEST_F(PumpOfAWindow, WakesWhenADescriptorCanBeRead) {
    const Pipe pipe;
    std::thread writer([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        pipe.Write();
    });
    const auto start = Clock::now();
    pollfd waiting{pipe.Descriptor(), POLLIN, 0};
    int wakings = 0;
    for (; ::poll(&waiting, 1, 0) == 0 && Since(start) < LongSleep; ++wakings)
        Pump.SleepOn({pipe.Descriptor()}, LongSleep);
    EXPECT_LT(Since(start), LongSleep / 2);
    EXPECT_LT(wakings, 20) << "it sleeps until then";
    writer.join();
}

TEST_F(PumpOfAWindow, WakesAgainForTheSameDescriptor) {
    const Pipe pipe;
    for (int time = 0; time < 3; ++time) {
        pipe.Write();
        const auto start = Clock::now();
        Pump.SleepOn({pipe.Descriptor()}, LongSleep);
        EXPECT_LT(Since(start), LongSleep / 2) << time;
        pipe.Read();
    }
}

/// Expects a condition on times to hold at one scale at least. A busy machine may be late by a fixed time, which does
/// not matter at a large scale; an error that is a ratio of the times fails at every scale.
void ExpectAtAScale(const std::function<bool(int)>& holds) {
    constexpr int Largest = 64;
    int scale = 1;
    while (scale <= Largest && !holds(scale))
        scale *= 2;
    EXPECT_LE(scale, Largest) << "at none";
}

/// A timer of Qt's, which is due after twice the time, ends a sleep that is too long.
TEST_F(PumpOfAWindow, SleepsNoLongerThanItIsTold) {
    ExpectAtAScale([this](int scale) {
        const std::int64_t told = 80 * scale;
        bool isLate = false;
        QTimer later;
        later.setTimerType(Qt::PreciseTimer);
        later.setSingleShot(true);
        QObject::connect(&later, &QTimer::timeout, [&] { isLate = true; });
        later.start(static_cast<int>(2 * told));
        const auto start = Clock::now();
        int wakings = 0;
        for (; Since(start) < told; ++wakings)
            Pump.SleepOn({}, static_cast<int>(std::max<std::int64_t>(told - Since(start), 0)));
        return !isLate && wakings < 40;
    });
}

std::string Order;

/// The second timer is due between the third and the fourth tick of the first one.
TEST_F(PumpOfAWindow, FiresATimerInTime) {
    ExpectAtAScale([this](int scale) {
        Order.clear();
        LoopTimer timer(Loop, 50 * scale, true, [] { Order += 'a'; });
        LoopTimer second(Loop, 175 * scale, true, [] { Order += 'b'; });
        const auto start = Clock::now();
        while (std::count(Order.begin(), Order.end(), 'a') < 4 && Since(start) < LongSleep)
            Loop.WaitOnce();
        EXPECT_GE(Since(start), 195 * scale);
        return Order == "aaaba";
    });
}

/// Returns the processor time that this process has used, in seconds.
double TimeUsed() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

TEST_F(PumpOfAWindow, UsesNoProcessorWhileItWaits) {
    LoopTimer timer(Loop, 100, true, CountTick);
    const Pipe pipe;
    BytesOf bytes(pipe);
    Listen(bytes);
    const double before = TimeUsed();
    const auto start = Clock::now();
    while (Ticks < 10 && Since(start) < LongSleep)
        Loop.WaitOnce();
    EXPECT_EQ(Ticks, 10);
    EXPECT_LT(TimeUsed() - before, 0.1);
}

/// Ends a loop of Qt's once a condition holds. A timer of Qt's checks it, of which our loop does not know.
std::unique_ptr<QTimer> QuitOnce(QEventLoop& loop, std::function<bool()> holds) {
    auto look = std::make_unique<QTimer>();
    QObject::connect(look.get(), &QTimer::timeout, &loop, [&loop, holds = std::move(holds)] {
        if (holds())
            loop.quit();
    });
    look->start(20);
    return look;
}

TEST_F(PumpOfAWindow, LetsTimersAndPortsGoOnInALoopOfQts) {
    LoopTimer timer(Loop, 30, true, CountTick);
    const Pipe pipe;
    BytesOf bytes(pipe);
    Listen(bytes);
    QEventLoop foreign;
    QTimer::singleShot(60, [&] { pipe.Write(); });
    QTimer::singleShot(120, [&] { pipe.Write(); });
    QTimer::singleShot(LongSleep, &foreign, &QEventLoop::quit);
    const auto quit = QuitOnce(foreign, [&] { return Ticks >= 8 && bytes.Count == 2; });
    // As when text is dragged: Qt's loop runs inside an event that our loop has let Qt handle.
    bool inside = false;
    QTimer::singleShot(0, [&] {
        foreign.exec();
        inside = true;
    });
    while (!inside)
        Pump.Sleep(30, Wake::ByEvents);
    EXPECT_GE(Ticks, 8);
    EXPECT_EQ(bytes.Count, 2);
}

TEST_F(PumpOfAWindow, LetsAPortGoOnInALoopOfQtsAlsoWithoutATimer) {
    const Pipe pipe;
    BytesOf bytes(pipe);
    Listen(bytes);
    QEventLoop foreign;
    bool inside = false;
    for (const int moment : {60, 120, 180})
        QTimer::singleShot(moment, [&] { pipe.Write(); });
    QTimer::singleShot(LongSleep, &foreign, &QEventLoop::quit);
    const auto quit = QuitOnce(foreign, [&] { return bytes.Count == 3; });
    QTimer::singleShot(0, [&] {
        foreign.exec();
        inside = true;
    });
    while (!inside)
        Pump.Sleep(1000, Wake::ByEvents);
    EXPECT_EQ(bytes.Count, 3);
}

TEST_F(PumpOfAWindow, UsesNoProcessorInALoopOfQts) {
    LoopTimer timer(Loop, 100, true, CountTick);
    const Pipe pipe;
    BytesOf bytes(pipe);
    Listen(bytes);
    QEventLoop foreign;
    bool inside = false;
    QTimer::singleShot(0, [&] {
        foreign.exec();
        inside = true;
    });
    QTimer::singleShot(1000, &foreign, &QEventLoop::quit);
    const double before = TimeUsed();
    while (!inside)
        Pump.Sleep(100, Wake::ByEvents);
    EXPECT_LT(TimeUsed() - before, 0.1);
}

TEST_F(PumpOfAWindow, RaisesNothingWhileItBreathes) {
    LoopTimer timer(Loop, 1, true, CountTick);
    const Pipe pipe;
    BytesOf bytes(pipe);
    Listen(bytes);
    pipe.Write();
    Pump.Sleep(0, Wake::ByEvents);
    const int before = Ticks;
    const int heard = bytes.Count;
    for (int time = 0; time < 5; ++time) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        Pump.Breathe();
    }
    EXPECT_EQ(Ticks, before);
    EXPECT_EQ(bytes.Count, heard);
    Loop.HandleDue();
    EXPECT_GT(Ticks, before);
    EXPECT_EQ(bytes.Count, 1);
}

class PaintedWidget final : public QWidget {
public:
    int Painted = 0;

protected:
    void paintEvent(QPaintEvent*) override { ++Painted; }
};

TEST_F(PumpOfAWindow, PaintsWhileItBreathes) {
    PaintedWidget widget;
    widget.resize(50, 50);
    widget.show();
    Loop.HandleDue();
    const int before = widget.Painted;
    widget.update();
    Pump.Breathe();
    EXPECT_GT(widget.Painted, before);
}

TEST_F(PumpOfAWindow, TellsOfWorkThatTakesATenthOfASecond) {
    std::vector<bool> told;
    std::vector<std::int64_t> when;
    Clock::time_point start;
    Pump.WorkShown = [&](bool working) {
        told.push_back(working);
        when.push_back(Since(start));
    };
    start = Clock::now();
    Loop.HandleDue();
    while (told.empty() && Since(start) < LongSleep)
        Pump.Working();
    EXPECT_EQ(told, std::vector<bool>{true});
    EXPECT_GE(when[0], 100) << "what is quick is not told";
    Loop.HandleDue();
    EXPECT_EQ(told, (std::vector<bool>{true, false}));
}

TEST_F(PumpOfAWindow, TakesADescriptorThatWasClosedAndOpenedAgain) {
    for (int time = 0; time < 3; ++time) {
        const Pipe pipe; // it has the same descriptor number as the one before
        Pump.SleepOn({pipe.Descriptor()}, 0);
        pipe.Write();
        const auto start = Clock::now();
        Pump.SleepOn({pipe.Descriptor()}, LongSleep);
        EXPECT_LT(Since(start), LongSleep / 2) << time;
        Pump.SleepOn({}, 0);
    }
}

TEST_F(PumpOfAWindow, LeavesTheProgramWithTheStatusThatItIsGiven) {
    for (const auto& [reason, status] :
         {std::pair(ProgramOver::Reason::Ended, 0), std::pair(ProgramOver::Reason::Failed, 7)}) {
        const pid_t child = ::fork();
        if (child == 0)
            Pump.Leave({reason, {}});
        int ended = 0;
        ASSERT_EQ(::waitpid(child, &ended, 0), child);
        EXPECT_TRUE(WIFEXITED(ended));
        EXPECT_EQ(WEXITSTATUS(ended), status);
    }
}

} // namespace
} // namespace backends::qt
