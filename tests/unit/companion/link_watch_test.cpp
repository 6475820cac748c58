// SPDX-License-Identifier: MIT
#include "companion/link_watch.h"

#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/storage/settings.h"
#include "tests/support/test_device.h"

#include <gtest/gtest.h>

namespace companion {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// A download is open that takes results, and its port is Com1.
class WatchedLink : public testing::Test {
protected:
    WatchedLink() {
        modQuorin::SaveSetting(u"ComPort", u"Com1");
        modBluetooth::Receive.LinkWanted = true;
        Port.Address = "/dev/x";
    }
    std::string Line(seconds now = seconds(100)) { return Watch.Line(Port, Held, now).Text; }

    support::TestDevice Device;
    int Asked = 0;
    LinkWatch Watch{[this](const std::string& address, platform::ErrorNumber error) {
        ++Asked;
        return address + " fails by " + std::to_string(NumberOf(error));
    }};
    PortFacts Port;
    bool Held = false;
};

TEST_F(WatchedLink, TellsWhyItsPortCanNotBeOpened) {
    Port.LastOpening = platform::NotAvailable;
    EXPECT_EQ(Line(), "Link down: Com1: /dev/x fails by 68, trying again");
}

TEST_F(WatchedLink, LooksIntoATroubleEveryTwoSecondsAtTheMost) {
    Port.LastOpening = platform::NotAvailable;
    for (int tenth = 0; tenth < 20; ++tenth)
        Watch.Line(Port, Held, seconds(100) + milliseconds(100 * tenth));
    EXPECT_EQ(Asked, 1);
    Line(seconds(102));
    EXPECT_EQ(Asked, 2);
    Port.LastOpening = platform::PermissionDenied;
    Line(seconds(102));
    EXPECT_EQ(Asked, 3) << "another trouble is looked into at once";
}

TEST_F(WatchedLink, TellsWhatItsSourceSaysOfATrouble) {
    Port.Address = "tcp:meter:5025";
    Port.LastOpening = platform::NotAvailable;
    Port.Trouble = "Connection refused";
    EXPECT_EQ(Line(), "Link down: Com1: tcp:meter:5025: Connection refused, trying again");
    EXPECT_EQ(Asked, 0);
}

TEST_F(WatchedLink, CountsFromTheLastResult) {
    Port.Open = true;
    EXPECT_EQ(Line(), "Link open: Com1 (/dev/x); no record yet");
    Watch.ResultCame(seconds(97));
    EXPECT_EQ(Line(), "Link open: Com1 (/dev/x); last record 3 s ago");
}

TEST_F(WatchedLink, GoesByTheCoreForWhatIsNoSerialPort) {
    modQuorin::SaveSetting(u"ComPort", u"SERVER");
    modBluetooth::Ports.LinkOpen = true;
    EXPECT_EQ(Line(), "Link open: RFCOMM server; no record yet");
    modQuorin::SaveSetting(u"ComPort", u"OFF");
    EXPECT_EQ(Line(), "Link off: no port is chosen");
}

TEST_F(WatchedLink, SaysHowMuchWaitsWhileItIsHeld) {
    Held = true;
    Port.Waiting = 7;
    EXPECT_EQ(Line(), "Link held: a question is open, 7 characters are waiting");
}

TEST_F(WatchedLink, IsDueFiveTimesASecond) {
    EXPECT_TRUE(Watch.IsDue(milliseconds(1000)));
    EXPECT_FALSE(Watch.IsDue(milliseconds(1199)));
    EXPECT_TRUE(Watch.IsDue(milliseconds(1200)));
}

} // namespace
} // namespace companion
