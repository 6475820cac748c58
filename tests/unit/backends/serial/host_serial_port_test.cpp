// SPDX-License-Identifier: MIT
#include "backends/serial/host_serial_port.h"

#include "tests/support/plugged_instrument.h"
#include "tests/support/temporary_root.h"

#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

using namespace platform;
using backends::ReadState;
using backends::SerialDevice;

namespace {

const Text Settings = u"9600,N,8,1";

class SerialLine : public testing::Test {
protected:
    void OpenPort() { ASSERT_EQ(Port.Open(Instrument.Path(), Settings), NoError); }

    /// Reads until so many bytes have come or no more come.
    std::string Receive(std::size_t count) {
        std::string bytes;
        while (bytes.size() < count && Port.IsOpen() && Tells(Port.Descriptor()))
            Port.ReadAvailable(bytes);
        return bytes;
    }

    termios Line() const {
        termios line{};
        EXPECT_EQ(tcgetattr(Instrument.Number(), &line), 0); // both ends show the one line's settings
        return line;
    }

    PseudoTerminal Instrument;
    SerialDevice Port;
};

TEST_F(SerialLine, ReceivesWhatIsSent) {
    OpenPort();
    Instrument.Send("[BLob]\r\nSO 1.5 \xC2\xB5g\r\n[/BLob]\r\n");
    EXPECT_EQ(Receive(31), "[BLob]\r\nSO 1.5 \xC2\xB5g\r\n[/BLob]\r\n");
}

/// A disk, a pipe or a folder is not even opened, because some of them react to that.
TEST(WhatIsNoDevice, IsLeftUntouched) {
    const TemporaryRoot root;
    root.Put("file", "");
    ASSERT_EQ(mkfifo(root.Path("pipe").c_str(), 0600), 0);
    const backends::Descriptor watch(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    for (const std::string& path : {root.Path("file"), root.Path("pipe"), root.Path()})
        ASSERT_GE(inotify_add_watch(watch.Number(), path.c_str(), IN_OPEN), 0);
    SerialDevice port;
    for (const std::string& path : {root.Path("file"), root.Path("pipe"), root.Path()})
        EXPECT_EQ(port.Open(path, Settings), NotAvailable) << path;
    std::array<char, 4096> events;
    EXPECT_EQ(read(watch.Number(), events.data(), events.size()), -1) << "one was opened";
    EXPECT_EQ(port.Open(root.Path("nothing"), Settings), FileNotFound);
}

TEST_F(SerialLine, HasNothingToTellWhileNothingIsSent) {
    OpenPort();
    std::string bytes = "old";
    EXPECT_EQ(Port.ReadAvailable(bytes), ReadState::Nothing);
    EXPECT_EQ(bytes, "old");
    EXPECT_FALSE(Tells(Port.Descriptor(), 0));
    EXPECT_TRUE(Port.IsOpen());
}

TEST_F(SerialLine, PassesEveryByteValueUnchanged) {
    OpenPort();
    std::string bytes;
    for (int value = 0; value < 0x100; ++value)
        bytes += static_cast<char>(value);
    Instrument.Send(bytes);
    EXPECT_EQ(Receive(0x100), bytes);
}

TEST_F(SerialLine, EchoesNothing) {
    OpenPort();
    Instrument.Send("x\r\n");
    EXPECT_EQ(Receive(3), "x\r\n");
    EXPECT_FALSE(Tells(Instrument.Number(), 50));
}

TEST_F(SerialLine, KeepsWhatWaitsWhenThePortIsOpened) {
    const int keepsTheLine = open(Instrument.Path().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    OpenPort(); // switches the line to raw mode, so that the next bytes wait unchanged
    Port.Close();
    Instrument.Send("early\r\n");
    ASSERT_TRUE(Tells(keepsTheLine));
    OpenPort();
    EXPECT_EQ(Receive(7), "early\r\n");
    close(keepsTheLine);
}

TEST_F(SerialLine, SetsTheLineAsAsked) {
    ASSERT_EQ(Port.Open(Instrument.Path(), u"9600,N,8,1"), NoError);
    EXPECT_EQ(cfgetispeed(&static_cast<const termios&>(Line())), speed_t{B9600});
    EXPECT_EQ(Line().c_cflag & CSTOPB, 0U);
    EXPECT_EQ(Line().c_lflag & (ICANON | ECHO | ISIG), 0U);
    EXPECT_EQ(Line().c_iflag & (IXON | IXOFF | ICRNL | ISTRIP), 0U);
    EXPECT_EQ(Line().c_cflag & CRTSCTS, 0U);
    EXPECT_NE(Line().c_cflag & CLOCAL, 0U);
    ASSERT_EQ(Port.Open(Instrument.Path(), u"115200,n,8,2"), NoError);
    EXPECT_EQ(cfgetispeed(&static_cast<const termios&>(Line())), speed_t{B115200});
    EXPECT_NE(Line().c_cflag & CSTOPB, 0U);
}

/// A pseudo terminal has no parity bit to switch on, but it keeps the settings for bytes with wrong parity.
TEST_F(SerialLine, ChecksParityAsAsked) {
    ASSERT_EQ(Port.Open(Instrument.Path(), u"9600,E,7,1"), NoError);
    EXPECT_NE(Line().c_iflag & INPCK, 0U);
    EXPECT_EQ(Line().c_cflag & PARODD, 0U);
    ASSERT_EQ(Port.Open(Instrument.Path(), u"9600,O,8,1"), NoError);
    EXPECT_NE(Line().c_iflag & INPCK, 0U);
    EXPECT_NE(Line().c_cflag & PARODD, 0U);
    ASSERT_EQ(Port.Open(Instrument.Path(), u"9600,N,8,1"), NoError);
    EXPECT_EQ(Line().c_iflag & INPCK, 0U);
    EXPECT_EQ(Line().c_cflag & PARODD, 0U);
}

TEST_F(SerialLine, TellsOnceThatTheOtherEndHasGone) {
    OpenPort();
    Instrument.PullOut();
    ASSERT_TRUE(Tells(Port.Descriptor()));
    std::string bytes;
    EXPECT_EQ(Port.ReadAvailable(bytes), ReadState::Gone);
    EXPECT_FALSE(Port.IsOpen());
    EXPECT_EQ(Port.Descriptor(), -1);
    EXPECT_EQ(Port.ReadAvailable(bytes), ReadState::Gone) << "a closed port stays gone";
}

TEST_F(SerialLine, OpensAgainWhenTheOtherEndHasComeBack) {
    const TemporaryRoot root;
    root.Link(Instrument.Path(), "port");
    ASSERT_EQ(Port.Open(root.Path("port"), Settings), NoError);
    std::filesystem::remove(root.Path("port")); // another test may soon get the number of this terminal
    Instrument.PullOut();
    std::string bytes;
    ASSERT_TRUE(Tells(Port.Descriptor()));
    ASSERT_EQ(Port.ReadAvailable(bytes), ReadState::Gone);
    EXPECT_NE(Port.Open(root.Path("port"), Settings), NoError) << "while it is away";
    Instrument.PlugIn();
    root.Link(Instrument.Path(), "port");
    ASSERT_EQ(Port.Open(root.Path("port"), Settings), NoError);
    Instrument.Send("back\r\n");
    EXPECT_EQ(Receive(6), "back\r\n");
}

TEST_F(SerialLine, IsForOneProgramUntilItIsClosed) {
    const int watcher = open(Instrument.Path().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    int exclusive = 0;
    OpenPort();
    ASSERT_EQ(ioctl(watcher, TIOCGEXCL, &exclusive), 0);
    EXPECT_NE(exclusive, 0);
    Port.Close();
    ASSERT_EQ(ioctl(watcher, TIOCGEXCL, &exclusive), 0);
    EXPECT_EQ(exclusive, 0);
    close(watcher);
}

TEST_F(SerialLine, IsLeftClosedByAFailedOpening) {
    OpenPort();
    EXPECT_NE(Port.Open("/nowhere/at/all", Settings), NoError);
    EXPECT_FALSE(Port.IsOpen());
}

TEST(SerialDeviceOpen, TellsThatThereIsNoSuchDevice) {
    SerialDevice port;
    EXPECT_EQ(port.Open("/nowhere/at/all", Settings), FileNotFound);
}

TEST(SerialDeviceOpen, RefusesWhatIsNoTerminal) {
    const TemporaryRoot root;
    root.Put("file", "x");
    ASSERT_EQ(mkfifo(root.Path("pipe").c_str(), 0600), 0);
    SerialDevice port;
    EXPECT_EQ(port.Open(root.Path("file"), Settings), NotAvailable);
    EXPECT_EQ(port.Open(root.Path("pipe"), Settings), NotAvailable);
    EXPECT_EQ(port.Open("/dev/null", Settings), NotAvailable);
    EXPECT_NE(port.Open(root.Path(), Settings), NoError);
    EXPECT_FALSE(port.IsOpen());
}

class RefusesLineSettings : public testing::TestWithParam<Text> {};

TEST_P(RefusesLineSettings, ThatItCannotRead) {
    const PseudoTerminal instrument;
    SerialDevice port;
    EXPECT_EQ(port.Open(instrument.Path(), GetParam()), NotAvailable);
    EXPECT_FALSE(port.IsOpen());
}

INSTANTIATE_TEST_SUITE_P(Rows, RefusesLineSettings,
                         testing::Values(u"", u"9600", u"9600,N,8", u"9600,N,8,", u"9600,N,8,3", u"9600,N,8,1.5",
                                         u"9600,N,8,1,", u"9600,X,8,1", u"9600,N,9,1", u"9600,N,4,1", u"9601,N,8,1",
                                         u"-9600,N,8,1", u",N,8,1", u"fast,N,8,1", u"9600;N;8;1", u"0,N,8,1"));

} // namespace
