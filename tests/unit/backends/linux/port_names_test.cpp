// SPDX-License-Identifier: MIT
#include "backends/linux/port_names.h"

#include "tests/unit/backends/linux/devices_under_test.h"

#include <gmock/gmock.h>

#include <limits>

using namespace backends;
using testing::ElementsAre;

namespace {

class NamesOfPorts : public DevicesUnderTest {
protected:
    /// Returns the name of the device that "ComN" means.
    std::string Com(std::int32_t number) {
        const std::string path = PortPath(number, Dev.Path());
        return path.empty() ? "none" : path.substr(Dev.Path().size() + 1);
    }
    /// Returns the names for "Com1" up to this number.
    std::vector<std::string> FirstComs(std::int32_t count) {
        std::vector<std::string> names;
        for (std::int32_t number = 1; number <= count; ++number)
            names.push_back(Com(number));
        return names;
    }
};

TEST_F(NamesOfPorts, ABluetoothPortComesBeforeEverythingElse) {
    Devices({"rfcomm0", "ttyUSB0", "ttyS0"});
    EXPECT_EQ(Com(1), "rfcomm0");
}

TEST_F(NamesOfPorts, ABluetoothPortIsNumberedByItself) {
    Devices({"rfcomm4"});
    EXPECT_EQ(Com(5), "rfcomm4");
    EXPECT_EQ(Com(1), "none");
    EXPECT_EQ(Com(4), "none");
}

TEST_F(NamesOfPorts, AdaptersAreCountedWithoutGapsTtyUsbFirst) {
    Devices({"ttyACM0", "ttyACM2", "ttyUSB1", "ttyUSB5"});
    EXPECT_THAT(FirstComs(5), ElementsAre("ttyUSB1", "ttyUSB5", "ttyACM0", "ttyACM2", "none"));
}

TEST_F(NamesOfPorts, AdaptersAreInNumericOrder) {
    Devices({"ttyUSB10", "ttyUSB9", "ttyUSB2", "ttyUSB100"});
    EXPECT_THAT(FirstComs(4), ElementsAre("ttyUSB2", "ttyUSB9", "ttyUSB10", "ttyUSB100"));
}

TEST_F(NamesOfPorts, APortOfTheBoardIsNeverTakenUnasked) {
    Devices({"ttyS0", "ttyS1"});
    EXPECT_THAT(FirstComs(2), ElementsAre("none", "none"));
    Device("ttyUSB0");
    EXPECT_THAT(FirstComs(2), ElementsAre("ttyUSB0", "none"));
}

TEST_F(NamesOfPorts, ListsWhatIsPluggedInWithTheNamesOfAdapters) {
    Devices({"ttyS0", "ttyUSB1", "rfcomm0", "null"});
    ById("usb-Example-if00", "../../ttyUSB1");
    const std::string dev = Dev.Path() + "/";
    EXPECT_THAT(PortNames(Dev.Path()),
                ElementsAre(dev + "rfcomm0", dev + "ttyUSB1", dev + "ttyS0", dev + "serial/by-id/usb-Example-if00"));
    EXPECT_THAT(Adapters(Dev.Path()), ElementsAre(dev + "rfcomm0", dev + "ttyUSB1"));
}

TEST_F(NamesOfPorts, ABluetoothPortDoesNotMoveTheAdapters) {
    Devices({"ttyUSB0", "ttyUSB1"});
    EXPECT_EQ(Com(2), "ttyUSB1");
    Device("rfcomm0");
    EXPECT_THAT(FirstComs(3), ElementsAre("rfcomm0", "ttyUSB1", "none"));
}

TEST_F(NamesOfPorts, EachAskingLooksAnew) {
    EXPECT_EQ(Com(1), "none");
    Device("ttyUSB0");
    EXPECT_EQ(Com(1), "ttyUSB0");
    Remove("ttyUSB0");
    EXPECT_EQ(Com(1), "none");
}

TEST_F(NamesOfPorts, NumbersThatNoPortHasMeanNoDevice) {
    Devices({"rfcomm0", "ttyUSB0", "ttyS0"});
    for (const std::int32_t number :
         {0, -1, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()})
        EXPECT_EQ(Com(number), "none") << number;
}

TEST_F(NamesOfPorts, NamesThatOnlyLookAlikeDoNotCount) {
    Devices({"ttyUSB", "ttyUSBx", "ttyUSB01", "ttyUSB-1", "ttyUSB1a", "xttyUSB0", "ttyusb0"});
    EXPECT_EQ(Com(1), "none");
}

TEST_F(NamesOfPorts, WhatIsNoDeviceDoesNotCount) {
    Dev.Put("ttyUSB0", "left by a redirection");
    Dev.Put("rfcomm0", "");
    Dev.Link("nowhere", "ttyUSB1");
    std::filesystem::create_directory(Dev.Path("ttyACM0"));
    EXPECT_EQ(Com(1), "none");
    Device("ttyUSB2");
    EXPECT_EQ(Com(1), "ttyUSB2");
}

TEST_F(NamesOfPorts, AFolderThatIsNotThereHasNoDevice) {
    EXPECT_EQ(PortPath(1, Dev.Path("missing")), "");
}

} // namespace
