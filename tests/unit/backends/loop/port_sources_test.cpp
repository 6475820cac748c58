// SPDX-License-Identifier: MIT
// The port on a source that is not a terminal: a TCP connection or a command behaves like a line.
#include "backends/loop/serial_ports.h"

#include "backends/serial/host_ports.h"
#include "tests/support/listener.h"

#include <gmock/gmock.h>

namespace backends {
namespace {

using testing::HasSubstr;

class PortOnASource : public testing::Test {
protected:
    void Put(const std::string& address) {
        PortPaths paths;
        paths.Pinned[1] = *ReadAddress(address).Address;
        Ports = std::make_unique<HostPorts>(std::move(paths));
        Port = std::make_unique<DeviceSerial>(*Ports);
        Port->SetPortId(1);
        Port->SetLineSettings(u"9600,N,8,1");
        Port->SetReceiveThreshold(1);
    }
    void PutMeter() { Put("tcp:127.0.0.1:" + std::to_string(Meter.Port())); }
    /// Tries again until the port opens. The form does the same twice a second.
    void OpenAtLast() {
        for (int times = 0; times < 1000 && Port->SetPortOpen(true) != NoError; ++times)
            Tells(-1, 1);
        ASSERT_TRUE(Port->PortOpen()) << Port->Trouble();
    }
    Text Receive() {
        for (int times = 0; times < 200 && !Port->RaiseWhatIsPending() && Port->PortOpen(); ++times)
            Tells(Ports->Descriptor(), 10);
        return Port->ReadInput();
    }
    void WaitUntilLost() {
        for (int times = 0; times < 1000 && Port->PortOpen(); ++times) {
            Tells(Ports->Descriptor(), 10);
            Port->RaiseWhatIsPending();
        }
        ASSERT_FALSE(Port->PortOpen());
    }

    Listener Meter;
    std::unique_ptr<HostPorts> Ports;
    std::unique_ptr<DeviceSerial> Port;
};

TEST_F(PortOnASource, ReceivesOverAConnection) {
    PutMeter();
    OpenAtLast();
    Meter.Accept();
    Meter.Send("1.5 \xC2\xB5g\r\n");
    EXPECT_EQ(Receive(), u"1.5 µg\r\n");
    EXPECT_EQ(Port->Address(), "tcp:127.0.0.1:" + std::to_string(Meter.Port()));
}

TEST_F(PortOnASource, CannotBeOpenedWhereNobodyListens) {
    PutMeter();
    Meter.Stop();
    ErrorNumber error = NoError;
    for (int times = 0; times < 1000 && (error = Port->SetPortOpen(true), Port->Trouble() == "connecting"); ++times)
        Tells(-1, 1);
    EXPECT_EQ(error, NotAvailable);
    EXPECT_FALSE(Port->PortOpen());
    EXPECT_THAT(Port->Trouble(), HasSubstr("refused"));
    EXPECT_EQ(Port->LastOpening(), NotAvailable);
}

TEST_F(PortOnASource, IsLostWithItsConnectionAndComesBack) {
    PutMeter();
    OpenAtLast();
    Meter.Accept();
    Meter.Drop();
    WaitUntilLost();
    EXPECT_EQ(Ports->Descriptor(), -1);
    EXPECT_EQ(Port->SetPortOpen(true), NotAvailable) << "whoever looks sees once that it was lost";
    EXPECT_EQ(Port->Trouble(), "the other end has closed the connection");
    OpenAtLast();
    Meter.Accept();
    Meter.Send("back\r\n");
    EXPECT_EQ(Receive(), u"back\r\n");
}

TEST_F(PortOnASource, LeavesItsConnectionWhenItIsClosed) {
    PutMeter();
    OpenAtLast();
    Meter.Accept();
    Port->SetPortOpen(false);
    EXPECT_TRUE(Meter.IsLeft());
    EXPECT_EQ(Port->SetPortOpen(true), NoError) << "that was no loss";
}

TEST_F(PortOnASource, ReceivesWhatACommandWrites) {
    Put("exec:printf '1.5 \\302\\265g\\r\\n'; cat");
    OpenAtLast();
    EXPECT_EQ(Receive(), u"1.5 µg\r\n");
}

TEST_F(PortOnASource, IsLostWithItsCommandWhichIsStartedAnew) {
    Put("exec:echo $$; exit 3");
    OpenAtLast();
    const Text first = Receive();
    WaitUntilLost();
    EXPECT_EQ(Port->SetPortOpen(true), NotAvailable);
    EXPECT_EQ(Port->Trouble(), "the command has ended with status 3");
    EXPECT_EQ(Port->SetPortOpen(true), NoError);
    EXPECT_NE(Receive(), first);
}

TEST_F(PortOnASource, TellsItsObserverOfEachStep) {
    Put("exec:exit 3");
    std::vector<std::string> steps;
    Port->Stepped = [&steps](DeviceSerial::Step step, const std::string& why) {
        static const char* const names[] = {"opened", "failed", "closed", "lost"};
        steps.push_back(std::string(names[static_cast<std::size_t>(step)]) + (why.empty() ? "" : ": ") + why);
    };
    OpenAtLast();
    WaitUntilLost();
    Port->SetPortOpen(true);
    OpenAtLast();
    Port->SetPortOpen(false);
    // The second command may have ended, too, before the port is closed.
    ASSERT_GE(steps.size(), 5U);
    EXPECT_EQ(steps.back(), "closed");
    steps.resize(4);
    EXPECT_THAT(steps, testing::ElementsAre("opened", "lost: the command has ended with status 3",
                                            "failed: the command has ended with status 3", "opened"));
}

TEST_F(PortOnASource, ShowsItsObserverTheBytesOfACommand) {
    Put("exec:printf '\\000\\377'; cat");
    std::string seen;
    Port->BytesCame = [&seen](std::string_view bytes) { seen += bytes; };
    OpenAtLast();
    Receive();
    EXPECT_EQ(seen, std::string("\0\xFF", 2));
}

} // namespace
} // namespace backends
