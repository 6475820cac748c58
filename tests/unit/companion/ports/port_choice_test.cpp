// SPDX-License-Identifier: MIT
#include "companion/ports/port_choice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace companion {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

PortRow Port(const std::string& path, const std::vector<PortName>& numbers = {}) {
    PortRow row;
    row.Path = path;
    row.Numbers = numbers;
    return row;
}

TEST(ChoiceOfAPort, KeepsTheNumberThatThePortHas) {
    const std::vector<PortRow> rows = {Port("/dev/ttyUSB0", {{1, false}}), Port("/dev/ttyUSB1", {{2, false}})};
    EXPECT_EQ(ChoiceOf(rows, 1), (PortChoice{2, "/dev/ttyUSB1"}));
}

TEST(ChoiceOfAPort, PrefersTheNumberThatAPersonGaveIt) {
    EXPECT_EQ(ChoiceOf({Port("/dev/ttyUSB0", {{1, false}, {7, true}})}, 0), (PortChoice{7, "/dev/ttyUSB0"}));
}

TEST(ChoiceOfAPort, TakesTheLowestNumberThatNoPortHas) {
    const std::vector<PortRow> rows = {Port("/dev/ttyUSB0", {{1, false}, {3, true}}), Port("/dev/ttyS0")};
    EXPECT_EQ(ChoiceOf(rows, 1), (PortChoice{2, "/dev/ttyS0"}));
}

TEST(ChoiceOfAPort, FollowsAnAdapterByItsOwnName) {
    PortRow adapter = Port("/dev/ttyUSB0", {{1, false}});
    adapter.Links = {"/dev/serial/by-id/usb-Example-if00"};
    EXPECT_EQ(ChoiceOf({adapter}, 0), (PortChoice{1, "/dev/serial/by-id/usb-Example-if00"}));
}

TEST(ProductOfADevice, IsItsModelOrElseItsVendor) {
    EXPECT_EQ(ProductOf({"Example Works", "Serial Adapter", "A1"}), "Serial Adapter");
    EXPECT_EQ(ProductOf({"Example Works", "", "A1"}), "Example Works");
    EXPECT_EQ(ProductOf({}), "");
}

TEST(DevicesPluggedIn, AreThoseThatWereNotThereBefore) {
    PluggedIn watch;
    EXPECT_THAT(watch.Look({"/dev/ttyUSB0"}), IsEmpty()) << "it was there at the start";
    EXPECT_THAT(watch.Look({"/dev/ttyUSB0", "/dev/ttyUSB1"}), ElementsAre("/dev/ttyUSB1"));
    EXPECT_THAT(watch.Look({"/dev/ttyUSB0", "/dev/ttyUSB1"}), IsEmpty());
    EXPECT_THAT(watch.Look({"/dev/ttyUSB1"}), IsEmpty());
    EXPECT_THAT(watch.Look({"/dev/ttyUSB0", "/dev/ttyUSB1"}), ElementsAre("/dev/ttyUSB0")) << "it was unplugged";
}

} // namespace
} // namespace companion
