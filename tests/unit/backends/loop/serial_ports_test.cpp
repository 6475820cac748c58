// SPDX-License-Identifier: MIT
#include "backends/loop/serial_ports.h"

#include "backends/headless/poll_pump.h"
#include "backends/host/host_clock.h"
#include "backends/loop/no_commands.h"
#include "backends/serial/host_ports.h"
#include "tests/support/plugged_instrument.h"

#include <gtest/gtest.h>

namespace backends {
namespace {

DeviceSerial* PortUnderTest = nullptr;
HostPorts* PortsUnderTest = nullptr;
int Events = 0;
void (*OnReceive)() = nullptr;

void Receive() {
    ++Events;
    OnReceive();
}

/// The control on a pseudo terminal.
class PortOnALine : public testing::Test {
protected:
    PortOnALine() {
        PortUnderTest = &Port;
        PortsUnderTest = &Ports;
        Port.Received = Receive;
        Events = 0;
        OnReceive = [] {};
        Open();
    }
    void Open() {
        Port.SetPortId(1);
        Port.SetLineSettings(u"9600,N,8,1");
        Port.SetReceiveThreshold(1);
        ASSERT_EQ(Port.SetPortOpen(true), NoError);
    }
    /// Sends bytes and waits until all of them can be read.
    void Send(std::string_view bytes) {
        Instrument.Send(bytes);
        WaitUntilThere(Ports.Descriptor(), bytes.size());
    }

    PseudoTerminal Instrument;
    HostPorts Ports{{{{1, PathAddress(Instrument.Path())}}, {}}};
    DeviceSerial Port{Ports};
};

TEST_F(PortOnALine, RaisesItsEventForWhatHasCome) {
    EXPECT_FALSE(Port.RaiseWhatIsPending());
    Send("one\r\n");
    EXPECT_TRUE(Port.RaiseWhatIsPending());
    EXPECT_EQ(Events, 1);
    EXPECT_EQ(Port.InBufferCount(), 5);
    EXPECT_EQ(Port.ReadInput(), u"one\r\n");
    EXPECT_FALSE(Port.RaiseWhatIsPending());
}

class CountingPump final : public headless::PollPump {
public:
    void SleepOn(const std::vector<int>& descriptors, int milliseconds) override {
        ++Sleeps;
        PollPump::SleepOn(descriptors, milliseconds);
    }
    int Sleeps = 0;
};

int Ticks = 0;

// If the descriptor were still waited for, or a timer were still due, the loop would not sleep while the event is held.
TEST_F(PortOnALine, LetsTheLoopSleepWhileItsEventIsHeld) {
    DeviceClock time(HostTime());
    NoCommands commands;
    CountingPump pump;
    EventLoop loop(time, commands, pump);
    LoopTimer timer(loop, 100, true, [] { ++Ticks; });
    bool held = true;
    Ticks = 0;
    Port.Held = timer.Held = [&held] { return held; };
    loop.Listen(Port);
    pump.WakenBy(Ports);
    Send("one\r\n");
    loop.PassTime(300);
    Send("two\r\n");
    loop.PassTime(300);
    EXPECT_EQ(Events + Ticks, 0);
    EXPECT_GT(pump.Sleeps, 0);
    EXPECT_LT(pump.Sleeps, 50);
    EXPECT_EQ(Port.WaitingCharacters(), 10U);
    held = false;
    loop.PassTime(150);
    EXPECT_EQ(Events > 0 ? Port.ReadInput() : u"", u"one\r\ntwo\r\n");
    EXPECT_GT(Ticks, 0);
}

TEST_F(PortOnALine, NoticesALineThatGoesWhileItsEventIsHeld) {
    Port.Held = [] { return true; };
    Send("one\r\n");
    EXPECT_FALSE(Port.RaiseWhatIsPending());
    Instrument.PullOut();
    Port.RaiseWhatIsPending();
    EXPECT_FALSE(Port.PortOpen());
    EXPECT_EQ(Ports.Descriptor(), -1);
    EXPECT_EQ(Port.WaitingCharacters(), 5U) << "what came before stays";
}

// A handler that reads until the buffer is empty, and lets events run meanwhile, would read as long as an instrument
// sends.
TEST_F(PortOnALine, ShowsNoMoreThanItsShareToOneEvent) {
    static const PseudoTerminal* sender = nullptr;
    static int reads = 0;
    constexpr int FarTooMany = 1000;
    sender = &Instrument;
    reads = 0;
    OnReceive = [] {
        PortUnderTest->SetReceiveThreshold(0);
        while (PortUnderTest->InBufferCount() > 0 && reads < FarTooMany) {
            PortUnderTest->ReadInput();
            sender->Send(std::string(2000, '~'));
            ASSERT_TRUE(Tells(PortsUnderTest->Descriptor()));
            PortUnderTest->RaiseWhatIsPending(); // as the loop does
            ++reads;
        }
        PortUnderTest->SetReceiveThreshold(1);
    };
    Send("~");
    EXPECT_TRUE(Port.RaiseWhatIsPending());
    EXPECT_GT(reads, 1);
    EXPECT_LT(reads, 100);
    OnReceive = [] {};
    EXPECT_TRUE(Port.RaiseWhatIsPending()) << "what is left comes with the next event";
    EXPECT_GT(Port.InBufferCount(), 0);
}

// A restart after a sleep closes the port. A program that was busy has not yet read what came before.
TEST_F(PortOnALine, GivesWhatCameBeforeItWasClosed) {
    Send("late\r\n");
    EXPECT_EQ(Port.SetPortOpen(false), NoError);
    EXPECT_FALSE(Port.PortOpen());
    EXPECT_EQ(Ports.Descriptor(), -1);
    EXPECT_TRUE(Port.RaiseWhatIsPending());
    EXPECT_EQ(Port.ReadInput(), u"late\r\n");
    EXPECT_FALSE(Port.RaiseWhatIsPending());
}

TEST_F(PortOnALine, KeepsWhatWasNotReadThroughAnotherOpening) {
    Send("first\r\n");
    Port.SetPortOpen(false);
    Open();
    Send("second\r\n");
    EXPECT_TRUE(Port.RaiseWhatIsPending());
    EXPECT_EQ(Port.ReadInput(), u"first\r\nsecond\r\n");
}

TEST_F(PortOnALine, IsClosedWhenTheOtherEndHasGone) {
    Instrument.PullOut();
    ASSERT_TRUE(Tells(Ports.Descriptor()));
    EXPECT_FALSE(Port.RaiseWhatIsPending());
    EXPECT_FALSE(Port.PortOpen());
    EXPECT_EQ(Ports.Descriptor(), -1) << "nothing is left for the loop to wait for";
    EXPECT_EQ(Events, 0);
}

TEST_F(PortOnALine, PutsACharacterTogetherThatCameInTwoReads) {
    Send("\xE2\x82");
    EXPECT_FALSE(Port.RaiseWhatIsPending()) << "no character is whole yet";
    Send("\xAC");
    EXPECT_TRUE(Port.RaiseWhatIsPending());
    EXPECT_EQ(Port.ReadInput(), u"€");
}

TEST_F(PortOnALine, ForgetsHalfACharacterWhenItIsClosed) {
    Send("\xE2\x82");
    Port.SetPortOpen(false);
    Open();
    Send("\xAC");
    Port.RaiseWhatIsPending();
    EXPECT_EQ(Port.ReadInput(), u"¬");
}

TEST_F(PortOnALine, ShowsItsObserverTheBytesAsTheyCame) {
    std::string seen;
    Port.BytesCame = [this, &seen](std::string_view bytes) {
        seen += bytes;
        EXPECT_EQ(Port.WaitingCharacters(), 0U) << "nothing is decoded yet";
    };
    const std::string bytes("\0\xC2\xB5g \xB5\xE2", 7);
    Send(bytes);
    Port.RaiseWhatIsPending();
    EXPECT_EQ(seen, bytes);
    EXPECT_EQ(Port.ReadInput(), u" µg µ") << "a NUL is a blank, and the last byte waits for more";
}

TEST_F(PortOnALine, ShowsItsObserverWhatCameJustBeforeItWasClosed) {
    std::string seen;
    Port.BytesCame = [&seen](std::string_view bytes) { seen += bytes; };
    Send("late\r\n");
    Port.SetPortOpen(false);
    EXPECT_EQ(seen, "late\r\n");
}

TEST(ObservedSimulatedPort, ShowsItsObserverWhatArrivesAsUtf8) {
    HostPorts ports({});
    DeviceSerial port(ports);
    std::string seen;
    port.BytesCame = [&seen](std::string_view bytes) { seen += bytes; };
    port.SetPortOpen(true);
    port.Arrive(Text(u"µg") + char16_t{0});
    EXPECT_EQ(seen, std::string("\xC2\xB5g\0", 4));
}

} // namespace
} // namespace backends
