// SPDX-License-Identifier: MIT
#include "tests/unit/backends/web/page_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace backends::web {
namespace {

using testing::Contains;
using testing::StartsWith;
using Json = journal::Line;

TEST(ThePage, SeesTheFirstScreenWithItsMenus) {
    PageDevice device;
    device.Start();
    const Json& seen = device.Seen();
    EXPECT_THAT(device.Texts(), Contains(StartsWith("V ")));
    EXPECT_EQ(seen["form"], Json::array({640, 480}));
    EXPECT_EQ(seen["menus"][0]["caption"], "Main");
    EXPECT_EQ(seen["menus"][0]["items"][0], Json({{"caption", "Start..."}, {"visible", true}, {"enabled", true}}));
    EXPECT_TRUE(seen["box"].is_null());
    EXPECT_TRUE(seen["input"].is_null());
    EXPECT_EQ(seen["keys"], Json::array());
}

TEST(ThePage, SeesARecordWithColoursAndLines) {
    PageDevice device;
    device.PutDriver();
    device.Start();
    device.OpenRecord();
    EXPECT_THAT(device.Texts(), Contains("Place"));
    const Json& cell = device.Seen()["heading"]["cells"][0];
    EXPECT_EQ(cell["ground"], "#0000ff");
    EXPECT_EQ(cell["lines"][0][2], "#ffffff");
    EXPECT_EQ(device.Seen()["grid"]["lined"], true);
    EXPECT_EQ(device.Seen()["grid"]["current"][0], "Place");
}

TEST(ThePage, SeesAnOpenFieldAndWhatIsTyped) {
    PageDevice device;
    device.PutDriver();
    device.Start();
    device.OpenRecord();
    const std::string there = "\"x\":400,\"y\":5";
    device.Send({device.Act("press", there), device.Act("release", there)});
    ASSERT_FALSE(device.Seen()["input"].is_null());
    EXPECT_EQ(device.Seen()["input"]["kind"], "text");
    EXPECT_EQ(device.Seen()["input"]["name"], "Place");
    const std::string field = "\"field\":" + device.Seen()["input"]["id"].dump();
    device.Send({device.Act("edit", field + ",\"words\":\"wall\",\"caret\":2,\"selected\":1,\"serial\":9")});
    EXPECT_EQ(device.Seen()["input"]["text"], "wall");
    EXPECT_EQ(device.Seen()["input"]["caret"], 2);
    EXPECT_EQ(device.Seen()["input"]["selected"], 1);
    EXPECT_EQ(device.Seen()["heard"], 9);
    EXPECT_THAT(device.Texts(), Contains("wall"));
}

TEST(ThePage, SeesTheKeysOfADeviceWithoutAWindow) {
    DeviceOptions palm;
    palm.DeviceType = NumberOf(DeviceKind::PalmOs);
    PageDevice device(palm);
    device.Start();
    EXPECT_THAT(device.Seen()["keys"], Contains(Json({{"code", 310}, {"name", "select"}})));
    EXPECT_EQ(device.Seen()["resizable"], false);
}

TEST(ThePage, SeesTheNoticesTheWorstFirst) {
    PageDevice device;
    device.Start();
    EXPECT_EQ(device.Seen()["notices"], Json::array());
    companion::Notices& notices = device.Platform.onlooker.notices;
    notices.Raise({.About = u"tip",
                   .Weight = companion::Severity::Hint,
                   .Words = u"Try this.",
                   .Offers = {{u"ports", u"Choose a port…"}}});
    notices.Raise({.About = u"loss a",
                   .Weight = companion::Severity::Loss,
                   .Words = u"Row 1 is not saved.",
                   .Stands = companion::Until::Tapped});
    device.Send({});
    EXPECT_EQ(device.Seen()["notices"], Json::parse(R"([
        {"about":"loss a", "text":"Row 1 is not saved.", "look":"loss", "confirmed":true, "offers":[]},
        {"about":"tip", "text":"Try this.", "look":"hint", "confirmed":false,
         "offers":[{"name":"ports", "words":"Choose a port…"}]}])"));
    device.Send({R"({"kind":"notice","words":"loss a"})", R"({"kind":"notice","words":"tip"})"});
    ASSERT_EQ(device.Seen()["notices"].size(), 1U); // a hint is not confirmed
    EXPECT_EQ(device.Seen()["notices"][0]["about"], "tip");
}

TEST(ThePage, IsShownNothingThatItHasSeen) {
    PageDevice device;
    device.Start();
    int shown = 0;
    device.Platform.Changed = [&](const std::string&) { ++shown; };
    device.Send({});
    EXPECT_EQ(shown, 0);
}

} // namespace
} // namespace backends::web
