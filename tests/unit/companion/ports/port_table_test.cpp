// SPDX-License-Identifier: MIT
#include "companion/ports/port_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace companion;
using testing::HasSubstr;
using testing::Not;

namespace {

PortRow Adapter() {
    PortRow row;
    row.Path = "/dev/ttyUSB0";
    row.Numbers = {{1, false}};
    return row;
}

TEST(PortTable, ShowsADeviceWithAllThatIsKnown) {
    PortRow row = Adapter();
    row.Numbers = {{1, false}, {3, true}};
    row.Name = {"Example Works", "Serial Adapter", "A50285"};
    row.Links = {"/dev/serial/by-id/usb-Example-if00"};
    row.State = PortState::Refused;
    row.Trouble = {"You are not in the group dialout, which may open it.", "Join it."};
    EXPECT_EQ(PortTable({row}), "/dev/ttyUSB0: Com1, Com3 (pinned); no permission\n"
                                "    Example Works, Serial Adapter, serial number A50285\n"
                                "    also /dev/serial/by-id/usb-Example-if00\n"
                                "    You are not in the group dialout, which may open it.\n"
                                "    Join it.\n"
                                "Numbers follow the order of plugging in. To keep a number for one adapter, pin it:\n"
                                "    --port 1=/dev/serial/by-id/NAME\n");
}

TEST(PortTable, ADeviceOfWhichNothingIsKnownIsOneLine) {
    EXPECT_EQ(PortTable({Adapter()}), "/dev/ttyUSB0: Com1; ready\n");
}

TEST(PortTable, TellsThatADeviceHasNoNumber) {
    PortRow row = Adapter();
    row.Numbers.clear();
    EXPECT_EQ(PortTable({row}), "/dev/ttyUSB0: no number, pin it to use it; ready\n");
}

TEST(PortTable, EveryDeviceHasItsLines) {
    PortRow other = Adapter();
    other.Path = "/dev/ttyS4";
    other.Numbers = {{5, false}};
    other.State = PortState::Untried;
    EXPECT_EQ(PortTable({Adapter(), other}),
              "/dev/ttyUSB0: Com1; ready\n/dev/ttyS4: Com5; looks ready, was not opened\n");
}

TEST(PortTable, NamesThatAreNotThereLeaveNoCommas) {
    PortRow row = Adapter();
    row.Name = {"", "Serial Adapter", ""};
    EXPECT_THAT(PortTable({row}), HasSubstr("\n    Serial Adapter\n"));
    row.Name = {"", "", "A1"};
    EXPECT_THAT(PortTable({row}), HasSubstr("\n    serial number A1\n"));
}

TEST(PortTable, SaysWhatToDoWhereThereIsNoPort) {
    EXPECT_EQ(PortTable({}), "There is no serial port. Plug an adapter in, or bind a Bluetooth device by rfcomm.\n");
}

TEST(PortTable, NamesOfDevicesDoNotDriveTheTerminal) {
    PortRow row = Adapter();
    row.Name.Model = "Evil\x1B[2J\nAdapter";
    row.Trouble.Reason = "bad\x07program uses it.";
    EXPECT_THAT(PortTable({row}), HasSubstr("Evil?[2J?Adapter"));
    EXPECT_THAT(PortTable({row}), Not(HasSubstr("\x07")));
}

TEST(PortTable, LongRemediesAreNotCut) {
    PortRow row = Adapter();
    row.Trouble.Remedy = std::string(600, 'x') + ".";
    EXPECT_THAT(PortTable({row}), HasSubstr("x.\n"));
}

} // namespace
