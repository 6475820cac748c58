// SPDX-License-Identifier: MIT
#include "backends/serial/byte_sources.h"

#include <gtest/gtest.h>

namespace backends {
namespace {

struct Good {
    const char* Said;
    AddressKind Kind;
    const char* Target;
    int TcpPort = 0;
    const char* Profile = "";
    const char* Shown = nullptr; ///< null if it is the same as Said
};

void PrintTo(const Good& row, std::ostream* out) {
    *out << row.Said;
}

class GoodAddress : public testing::TestWithParam<Good> {};

TEST_P(GoodAddress, IsRead) {
    const Good& row = GetParam();
    const AddressReading reading = ReadAddress(row.Said);
    ASSERT_TRUE(reading.Address) << reading.Error;
    EXPECT_EQ(reading.Address->Kind, row.Kind);
    EXPECT_EQ(reading.Address->Target, row.Target);
    EXPECT_EQ(reading.Address->TcpPort, row.TcpPort);
    EXPECT_EQ(reading.Address->Profile, row.Profile);
    EXPECT_EQ(AddressText(*reading.Address), row.Shown != nullptr ? row.Shown : row.Said);
}

constexpr auto Path = AddressKind::Path;
constexpr auto Tcp = AddressKind::Tcp;
constexpr auto Exec = AddressKind::Exec;
constexpr auto Bluetooth = AddressKind::Bluetooth;

INSTANTIATE_TEST_SUITE_P(
    Rows, GoodAddress,
    testing::Values(Good{"/dev/ttyUSB0", Path, "/dev/ttyUSB0"},
                    Good{"/dev/serial/by-path/pci-0000:00:14.0", Path, "/dev/serial/by-path/pci-0000:00:14.0"},
                    Good{"/tcp:a:1", Path, "/tcp:a:1"}, Good{"/a@b", Path, "/a@b"}, Good{"./bt:x", Path, "./bt:x"},
                    Good{"../line", Path, "../line"}, Good{"line", Path, "line"}, Good{"a=b", Path, "a=b"},
                    Good{"folder/line", Path, "folder/line"}, Good{"tcp", Path, "tcp"},
                    Good{"tcp:meter:5025", Tcp, "meter", 5025}, Good{"tcp:192.168.1.5:1", Tcp, "192.168.1.5", 1},
                    Good{"tcp:[::1]:65535", Tcp, "::1", 65535},
                    Good{"tcp:[meter]:5", Tcp, "meter", 5, "", "tcp:meter:5"},
                    Good{"tcp:meter:0005", Tcp, "meter", 5, "", "tcp:meter:5"},
                    Good{"exec:cat /dev/ttyUSB0", Exec, "cat /dev/ttyUSB0"},
                    Good{"exec:ssh me@shed cat", Exec, "ssh me@shed cat"},
                    Good{"exec: a; b=c | d", Exec, " a; b=c | d"},
                    Good{"bt:00:11:22:aa:BB:ff", Bluetooth, "", 0, "", "bt:00:11:22:AA:BB:FF#1"},
                    Good{"bt:00:11:22:33:44:55#30", Bluetooth, ""}, Good{"meter@/dev/x", Path, "/dev/x", 0, "meter"},
                    Good{"m-1_A@tcp:a:1", Tcp, "a", 1, "m-1_A"}, Good{"m@exec:x@y", Exec, "x@y", 0, "m"},
                    Good{"m@bt:00:11:22:33:44:55#2", Bluetooth, "", 0, "m"}));

TEST(BluetoothAddressOfAPort, HasItsChannel) {
    const AddressReading reading = ReadAddress("bt:01:02:03:04:05:FF#7");
    ASSERT_TRUE(reading.Address);
    EXPECT_EQ(reading.Address->Bluetooth, (BluetoothAddress{{1, 2, 3, 4, 5, 255}, 7}));
}

struct Bad {
    const char* Said;
    const char* Why;
};

void PrintTo(const Bad& row, std::ostream* out) {
    *out << row.Said;
}

class BadAddress : public testing::TestWithParam<Bad> {};

TEST_P(BadAddress, IsRefusedWithTheReason) {
    const AddressReading reading = ReadAddress(GetParam().Said);
    EXPECT_FALSE(reading.Address);
    EXPECT_EQ(reading.Error, GetParam().Why);
}

constexpr const char* NoTcp = "is not of the form tcp:HOST:PORT, such as tcp:192.168.1.5:5025 or tcp:[::1]:5025";
constexpr const char* NoBluetooth = "is not of the form bt:MAC or bt:MAC#CHANNEL, such as bt:00:11:22:33:44:55#1";
constexpr const char* NoCommand = "names no command, such as exec:ssh shed cat /dev/ttyUSB0";
constexpr const char* NoKind =
    "is not one of /PATH, bt:MAC, tcp:HOST:PORT and exec:COMMAND; a path that begins otherwise "
    "is written with ./ in front";

INSTANTIATE_TEST_SUITE_P(
    Rows, BadAddress,
    testing::Values(Bad{"", "names no address"}, Bad{"m@", "names no address"}, Bad{"tcp:", NoTcp},
                    Bad{"tcp:meter", NoTcp}, Bad{"tcp:meter:", NoTcp}, Bad{"tcp::1", NoTcp}, Bad{"tcp:a:0", NoTcp},
                    Bad{"tcp:a:65536", NoTcp}, Bad{"tcp:a:-1", NoTcp}, Bad{"tcp:a:+1", NoTcp}, Bad{"tcp:a:1x", NoTcp},
                    Bad{"tcp:::1:5", NoTcp}, Bad{"tcp:a b:5", NoTcp}, Bad{"tcp:u@a:5", NoTcp}, Bad{"tcp:[]:5", NoTcp},
                    Bad{"tcp:[a:5", NoTcp}, Bad{"bt:", NoBluetooth}, Bad{"bt:00:11:22:33:44", NoBluetooth},
                    Bad{"bt:00:11:22:33:44:55#0", NoBluetooth}, Bad{"bt:00:11:22:33:44:55#31", NoBluetooth},
                    Bad{"bt:00:11:22:33:44:5G", NoBluetooth}, Bad{"exec:", NoCommand}, Bad{"exec: \t", NoCommand},
                    Bad{"TCP:a:1", NoKind}, Bad{"udp:a:1", NoKind}, Bad{"a:b", NoKind}, Bad{"m@@/dev/x", NoKind},
                    Bad{"@/dev/x", NoKind}, Bad{"a b@/dev/x", NoKind}));

TEST(WhatIsNotBuilt, SaysSoAndHasNoSource) {
    const PortAddress bluetooth = *ReadAddress("bt:00:11:22:33:44:55").Address;
    const PortAddress profile = *ReadAddress("meter@/dev/x").Address;
    EXPECT_EQ(WhyNotBuilt(bluetooth), "bt: is not built yet; bind the device by rfcomm and give /dev/rfcomm0");
    EXPECT_EQ(WhyNotBuilt(profile), "a profile (meter@) is not built yet; give the address alone");
    EXPECT_EQ(MakeSource(bluetooth), nullptr);
    EXPECT_EQ(MakeSource(profile), nullptr);
}

TEST(WhatIsBuilt, HasASource) {
    for (const char* text : {"/dev/x", "tcp:a:1", "exec:true"}) {
        const PortAddress address = *ReadAddress(text).Address;
        EXPECT_EQ(WhyNotBuilt(address), "") << text;
        EXPECT_NE(MakeSource(address), nullptr) << text;
    }
}

} // namespace
} // namespace backends
