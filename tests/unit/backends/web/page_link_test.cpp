// SPDX-License-Identifier: MIT
#include "backends/web/page_link.h"

#include "src/storage/settings.h"
#include "tests/unit/backends/web/page_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace backends::web {
namespace {

class LinkOnThePage : public testing::Test {
protected:
    void SetUp() override {
        Device.PutDriver();
        Link.Changed = [this](const std::string& line) { Seen = journal::Line::parse(line); };
        Device.Start();
    }
    /// The line is looked at five times a second, by the machine's clock.
    void Look() {
        std::this_thread::sleep_for(std::chrono::milliseconds(210));
        Device.Send({});
    }

    PageDevice Device;
    PageLink Link{Device.Platform};
    journal::Line Seen;
};

TEST_F(LinkOnThePage, SaysThatNoPortIsChosen) {
    Look();
    EXPECT_EQ(Seen["text"], "Link off: no port is chosen");
    EXPECT_EQ(Seen["ports"], true);
    EXPECT_EQ(Seen["losses"], "");
}

TEST_F(LinkOnThePage, APortThatAPersonUsesIsStored) {
    Device.Send({Device.Act("useport", "\"item\":2")});
    EXPECT_EQ(modQuorin::GetSetting(u"ComPort", u""), u"Com2");
    Look();
    EXPECT_EQ(Seen["text"], "Link off: no download is open for Com2");
    Device.Send({Device.Act("useport", "\"item\":0")});
    EXPECT_EQ(modQuorin::GetSetting(u"ComPort", u""), u"Com2");
}

TEST_F(LinkOnThePage, ReadingsThatAreStoredNowhereStandUntilSeen) {
    Device.Platform.onlooker.losses.Reading(u"qrn0001.txt: the reading 7 is not stored.");
    Look();
    EXPECT_THAT(std::string(Seen["losses"]), testing::HasSubstr("the reading 7"));
    Device.Send({Device.Act("losses")});
    Look();
    EXPECT_EQ(Seen["losses"], "");
}

} // namespace
} // namespace backends::web
