// SPDX-License-Identifier: MIT
#include "platform/qt/pump.h"

#include "platform/device/no_commands.h"

#include <QEventLoop>
#include <QTimer>
#include <QWidget>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <poll.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace platform::qt {
namespace {

using Clock = std::chrono::steady_clock;

std::int64_t Since(Clock::time_point start) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count();
}

/// A pipe that can be made readable.
class Pipe {
public:
    Pipe() { EXPECT_EQ(::pipe(Ends), 0); }
    ~Pipe() {
        ::close(Ends[0]);
        ::close(Ends[1]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    int Descriptor() const { return Ends[0]; }
    void Write() const { EXPECT_EQ(::write(Ends[1], "x", 1), 1); }
    void Read() const {
        char byte = 0;
        EXPECT_EQ(::read(Ends[0], &byte, 1), 1);
    }

private:
    int Ends[2] = {};
};

/// Raises an event for each byte of a pipe.
class BytesOf final : public device::EventSource {
public:
    explicit BytesOf(const Pipe& pipe) : From(pipe) {}
    int Descriptor() override { return From.Descriptor(); }
    bool RaiseWhatIsPending() override {
        pollfd waiting{From.Descriptor(), POLLIN, 0};
        if (::poll(&waiting, 1, 0) <= 0)
            return false;
        From.Read();
        ++Count;
        return true;
    }
    int Count = 0;

private:
    const Pipe& From;
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

    QtPump Pump{[](const device::ProgramOver& over) { return over.Why == device::ProgramOver::Reason::Ended ? 0 : 7; }};
    device::DeviceClock Time;
    device::NoCommands Commands;
    device::EventLoop Loop{Time, Commands, Pump};
};

TEST_F(PumpOfAWindow, WakesWhenADescriptorCanBeRead) {
    const Pipe pipe;
    std::thread writer([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        pipe.Write();
    });
    const auto start = Clock::now();
    pollfd waiting{pipe.Descriptor(), POLLIN, 0};
    while (::poll(&waiting, 1, 0) == 0 && Since(start) < 5000)
        Pump.Sleep({pipe.Descriptor()}, 5000);
    EXPECT_LT(Since(start), 2000);
    EXPECT_GE(Since(start), 40);
    writer.join();
}

TEST_F(PumpOfAWindow, WakesAgainForTheSameDescriptor) {
    const Pipe pipe;
    for (int time = 0; time < 3; ++time) {
        pipe.Write();
        const auto start = Clock::now();
        Pump.Sleep({pipe.Descriptor()}, 5000);
        EXPECT_LT(Since(start), 2000) << time;
        pipe.Read();
    }
}

TEST_F(PumpOfAWindow, SleepsNoLongerThanItIsTold) {
    const auto start = Clock::now();
    while (Since(start) < 80)
        Pump.Sleep({}, static_cast<int>(80 - Since(start)));
    EXPECT_LT(Since(start), 400);
}

TEST_F(PumpOfAWindow, FiresATimerInTime) {
    device::LoopTimer timer(Loop, 50, true, CountTick);
    const auto start = Clock::now();
    while (Ticks < 4 && Since(start) < 5000)
        Loop.WaitOnce();
    EXPECT_GE(Since(start), 195);
    EXPECT_LT(Since(start), 1000);
}

/// The processor's time of this process, in seconds.
double TimeUsed() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

TEST_F(PumpOfAWindow, UsesNoProcessorWhileItWaits) {
    device::LoopTimer timer(Loop, 100, true, CountTick);
    const Pipe pipe;
    BytesOf bytes(pipe);
    Loop.Listen(bytes);
    const double before = TimeUsed();
    const auto start = Clock::now();
    while (Since(start) < 1000)
        Loop.WaitOnce();
    EXPECT_LT(TimeUsed() - before, 0.1);
    EXPECT_GE(Ticks, 7);
}

TEST_F(PumpOfAWindow, LetsTimersAndPortsGoOnInALoopOfQts) {
    device::LoopTimer timer(Loop, 30, true, CountTick);
    const Pipe pipe;
    BytesOf bytes(pipe);
    Loop.Listen(bytes);
    QEventLoop foreign;
    QTimer::singleShot(60, [&] { pipe.Write(); });
    QTimer::singleShot(120, [&] { pipe.Write(); });
    QTimer::singleShot(500, &foreign, &QEventLoop::quit);
    // As a text that is dragged: Qt's loop runs inside an event that ours has let Qt handle.
    bool inside = false;
    QTimer::singleShot(0, [&] {
        foreign.exec();
        inside = true;
    });
    const auto start = Clock::now();
    while (!inside && Since(start) < 5000)
        Pump.Sleep(Loop.Descriptors(), 30);
    EXPECT_GE(Ticks, 8);
    EXPECT_EQ(bytes.Count, 2);
}

TEST_F(PumpOfAWindow, LetsAPortGoOnInALoopOfQtsAlsoWithoutATimer) {
    const Pipe pipe;
    BytesOf bytes(pipe);
    Loop.Listen(bytes);
    QEventLoop foreign;
    bool inside = false;
    for (const int moment : {60, 120, 180})
        QTimer::singleShot(moment, [&] { pipe.Write(); });
    QTimer::singleShot(500, &foreign, &QEventLoop::quit);
    QTimer::singleShot(0, [&] {
        foreign.exec();
        inside = true;
    });
    while (!inside)
        Pump.Sleep(Loop.Descriptors(), 1000);
    EXPECT_EQ(bytes.Count, 3);
}

TEST_F(PumpOfAWindow, UsesNoProcessorInALoopOfQts) {
    device::LoopTimer timer(Loop, 100, true, CountTick);
    const Pipe pipe;
    BytesOf bytes(pipe);
    Loop.Listen(bytes);
    QEventLoop foreign;
    bool inside = false;
    QTimer::singleShot(0, [&] {
        foreign.exec();
        inside = true;
    });
    QTimer::singleShot(1000, &foreign, &QEventLoop::quit);
    const double before = TimeUsed();
    while (!inside)
        Pump.Sleep(Loop.Descriptors(), 100);
    EXPECT_LT(TimeUsed() - before, 0.1);
}

TEST_F(PumpOfAWindow, RaisesNothingWhileItBreathes) {
    device::LoopTimer timer(Loop, 1, true, CountTick);
    const Pipe pipe;
    BytesOf bytes(pipe);
    Loop.Listen(bytes);
    pipe.Write();
    Pump.Sleep(Loop.Descriptors(), 0);
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
    Pump.WorkShown = [&](bool working) { told.push_back(working); };
    Loop.HandleDue();
    const auto start = Clock::now();
    while (Since(start) < 60)
        Pump.Working();
    EXPECT_TRUE(told.empty());
    while (Since(start) < 300)
        Pump.Working();
    EXPECT_EQ(told, std::vector<bool>{true});
    Loop.HandleDue();
    EXPECT_EQ(told, (std::vector<bool>{true, false}));
}

TEST_F(PumpOfAWindow, TakesADescriptorThatWasClosedAndOpenedAgain) {
    for (int time = 0; time < 3; ++time) {
        const Pipe pipe; // the same number as the one before
        Pump.Sleep({pipe.Descriptor()}, 0);
        pipe.Write();
        const auto start = Clock::now();
        Pump.Sleep({pipe.Descriptor()}, 3000);
        EXPECT_LT(Since(start), 1500) << time;
        Pump.Sleep({}, 0);
    }
}

TEST_F(PumpOfAWindow, LeavesTheProgramWithTheStatusThatItIsGiven) {
    for (const auto& [reason, status] :
         {std::pair(device::ProgramOver::Reason::Ended, 0), std::pair(device::ProgramOver::Reason::Failed, 7)}) {
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
} // namespace platform::qt
