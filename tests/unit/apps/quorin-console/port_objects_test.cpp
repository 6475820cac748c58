// SPDX-License-Identifier: MIT
#include "apps/quorin-console/port_objects.h"

#include <gtest/gtest.h>

namespace console {
namespace {

TEST(PortObjects, TellAllThatIsKnownOfAPort) {
    companion::PortRow row{.Path = "/dev/ttyUSB0"};
    row.Numbers = {{1, false}, {3, true}};
    row.Name = {"Example Works", "Serial Adapter", "A50285"};
    row.Links = {"/dev/serial/by-id/usb-Example-if00"};
    row.State = companion::PortState::Refused;
    row.Trouble = {"You are not in the group dialout.", "Join it with: sudo usermod", "sudo usermod"};
    EXPECT_EQ(PortObject(row).dump(),
              R"({"port":"/dev/ttyUSB0","state":"refused","names":["Com1"],"pinned":["Com3"],)"
              R"("links":["/dev/serial/by-id/usb-Example-if00"],"vendor":"Example Works","model":"Serial Adapter",)"
              R"("serial":"A50285","reason":"You are not in the group dialout.",)"
              R"("remedy":"Join it with: sudo usermod","command":"sudo usermod"})");
}

TEST(PortObjects, LeaveOutWhatIsNotKnown) {
    EXPECT_EQ(PortObject({.Path = "/dev/ttyS0"}).dump(),
              R"({"port":"/dev/ttyS0","state":"ready","names":[],"pinned":[],"links":[]})");
}

TEST(PortObjects, APathThatIsNoUtf8IsStillAnObject) {
    EXPECT_NE(journal::TextOf(PortObject({.Path = "/dev/tty\xff"})).find("/dev/tty"), std::string::npos);
}

} // namespace
} // namespace console
