// SPDX-License-Identifier: MIT
#include "backends/linux/connections.h"

#include "tests/support/plugged_instrument.h"
#include "tests/support/printed_rows.h"
#include "tests/support/temporary_root.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <vector>

using namespace platform;
using namespace backends;
using testing::ElementsAre;

namespace {

using support::PrintTo;

bool HasHungUp(int descriptor) {
    pollfd one{descriptor, POLLIN, 0};
    poll(&one, 1, 0);
    return (one.revents & POLLHUP) != 0;
}

/// A Bluetooth service with the outcome that the test sets. It keeps the far end of each socket.
class Connections : public testing::Test {
protected:
    ErrorNumber Open(const std::string& name) { return Service.Open(modStringTools::FromBytes(name), Object); }

    int Connect(const BluetoothAddress& address, Descriptor& socket) {
        Asked.push_back(address);
        std::array<int, 2> ends{};
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
        socket = Descriptor(ends[0]);
        FarEnd = Descriptor(ends[1]);
        return Outcome;
    }

    TemporaryRoot Folder;
    std::vector<BluetoothAddress> Asked;
    int Outcome = 0;
    Descriptor FarEnd;
    HostConnections Service{
        [this](const BluetoothAddress& address, Descriptor& socket) { return Connect(address, socket); }};
    std::unique_ptr<Connection> Object;
};

TEST_F(Connections, OpenADeviceByItsPath) {
    const PseudoTerminal terminal;
    ASSERT_EQ(Open(terminal.Path()), NoError);
    ASSERT_NE(Object, nullptr);
    termios line{};
    ASSERT_EQ(tcgetattr(terminal.Number(), &line), 0);
    EXPECT_EQ(cfgetispeed(&line), static_cast<speed_t>(B9600));
    EXPECT_EQ(line.c_cflag & CSIZE, static_cast<tcflag_t>(CS8));
    EXPECT_EQ(line.c_lflag & (ICANON | ECHO), 0U);
}

TEST_F(Connections, ADeviceStaysOpenAsLongAsItsObject) {
    const PseudoTerminal terminal;
    ASSERT_EQ(Open(terminal.Path()), NoError);
    EXPECT_FALSE(HasHungUp(terminal.Number()));
    Object.reset();
    EXPECT_TRUE(HasHungUp(terminal.Number()));
}

TEST_F(Connections, AMissingDeviceIsNotFound) {
    EXPECT_EQ(Open(Folder.Path("ttyUSB0")), FileNotFound);
    EXPECT_EQ(Object, nullptr);
}

TEST_F(Connections, WhatIsNoTerminalIsNotAvailable) {
    Folder.Put("file", "");
    ASSERT_EQ(mkfifo(Folder.Path("pipe").c_str(), 0600), 0);
    for (const std::string& path :
         {Folder.Path("file"), Folder.Path("pipe"), Folder.Path(), std::string("/dev/null"), std::string("/")})
        EXPECT_EQ(Open(path), NotAvailable) << path;
    EXPECT_EQ(Object, nullptr);
}

TEST_F(Connections, AFailureLeavesNoOlderObject) {
    const PseudoTerminal terminal;
    ASSERT_EQ(Open(terminal.Path()), NoError);
    ASSERT_EQ(Open("BT1"), FileNotFound);
    EXPECT_EQ(Object, nullptr);
}

TEST_F(Connections, ABluetoothAddressIsConnectedToOnChannelOne) {
    ASSERT_EQ(Open("00:1a:2B:33:44:FF"), NoError);
    ASSERT_EQ(Asked.size(), 1U);
    EXPECT_THAT(Asked[0].Bytes, ElementsAre(0x00, 0x1A, 0x2B, 0x33, 0x44, 0xFF));
    EXPECT_EQ(Asked[0].Channel, 1);
}

TEST_F(Connections, AChannelMayBeNamed) {
    ASSERT_EQ(Open("00:11:22:33:44:55#3"), NoError);
    ASSERT_EQ(Open("00:11:22:33:44:55#30"), NoError);
    EXPECT_EQ(Asked[0].Channel, 3);
    EXPECT_EQ(Asked[1].Channel, 30);
}

class OtherNames : public Connections, public testing::WithParamInterface<std::string> {};

TEST_P(OtherNames, AreNotFound) {
    EXPECT_EQ(Open(GetParam()), FileNotFound);
    EXPECT_EQ(Object, nullptr);
    EXPECT_TRUE(Asked.empty());
}

INSTANTIATE_TEST_SUITE_P(Table, OtherNames,
                         testing::Values("", "BT1", "SERVER", "dev/ttyUSB0", "00:11:22:33:44", "00:11:22:33:44:5",
                                         "00:11:22:33:44:5g", "00-11-22-33-44-55", "00:11:22:33:44:55:66",
                                         "00:11:22:33:44:55 ", "00:11:22:33:44:55#", "00:11:22:33:44:55#0",
                                         "00:11:22:33:44:55#31", "00:11:22:33:44:55#-1", "00:11:22:33:44:55#001",
                                         "00:11:22:33:44:55#1x", "00:11:22:33:44:55:3", " 00:11:22:33:44:55",
                                         std::string("/dev/null\0/x", 12)));

TEST_F(Connections, AConnectionThatIsOnItsWayCountsAsOpen) {
    Outcome = EINPROGRESS;
    EXPECT_EQ(Open("00:11:22:33:44:55"), NoError);
    ASSERT_NE(Object, nullptr);
    EXPECT_FALSE(HasHungUp(FarEnd.Number()));
    Object.reset();
    EXPECT_TRUE(HasHungUp(FarEnd.Number()));
}

struct FailureRow {
    int Code;
    ErrorNumber Error;
};

class ConnectionFailures : public Connections, public testing::WithParamInterface<FailureRow> {};

TEST_P(ConnectionFailures, GiveTheirNumberAndNoObject) {
    Outcome = GetParam().Code;
    EXPECT_EQ(Open("00:11:22:33:44:55"), GetParam().Error) << Outcome;
    EXPECT_EQ(Object, nullptr);
    EXPECT_TRUE(HasHungUp(FarEnd.Number())) << "the socket is left open";
}

INSTANTIATE_TEST_SUITE_P(Table, ConnectionFailures,
                         testing::Values(FailureRow{EHOSTDOWN, DeviceFailed}, FailureRow{EBUSY, NotAvailable},
                                         FailureRow{EACCES, PermissionDenied}, FailureRow{EAFNOSUPPORT, NotAvailable},
                                         FailureRow{EPROTONOSUPPORT, NotAvailable}));

TEST(BluetoothSocketAddress, HasTheKernelsLayout) {
    // The address family is 31, Bluetooth's, in the machine's byte order. The address begins with its last byte.
    const auto bytes = SocketAddress({{0x00, 0x11, 0x22, 0x33, 0x44, 0x55}, 7});
    const std::uint16_t family = 31;
    std::array<std::uint8_t, 2> inOrder{};
    std::memcpy(inOrder.data(), &family, sizeof family);
    EXPECT_THAT(bytes, ElementsAre(inOrder[0], inOrder[1], 0x55, 0x44, 0x33, 0x22, 0x11, 0x00, 7, 0));
}

TEST(RealBluetooth, NeverKeepsTheCallerWaiting) {
    HostConnections service;
    std::unique_ptr<Connection> object;
    const auto start = std::chrono::steady_clock::now();
    service.Open(u"00:00:00:00:00:00", object);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

} // namespace
