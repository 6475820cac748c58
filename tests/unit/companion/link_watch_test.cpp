// SPDX-License-Identifier: MIT
#include "companion/link_watch.h"

#include "companion/words.h"
#include "src/drivers/selection.h"
#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/storage/settings.h"
#include "tests/support/test_device.h"

#include <gtest/gtest.h>

namespace companion {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// An open download that takes results. Its port is Com1.
class WatchedLink : public testing::Test {
protected:
    WatchedLink() {
        modQuorin::SaveSetting(u"ComPort", u"Com1");
        modBluetooth::Receive.LinkWanted = true;
        modQuorin::Selection.SelectedDriver = u"Meter";
        Port.Address = "/dev/x";
        Now = seconds(100);
    }
    std::string Line() { return Watch.Line(Port, Held).Text; }
    static std::string TimeNow() { return modStringTools::ToBytes(TimeText(platform::Device().clock.Now())); }
    void Judge(platform::Fate fate, std::int32_t row = -1) {
        platform::Verdict verdict{.Fate = fate, .Row = row, .Field = u"Wall", .File = u"qrn0001.txt"};
        verdict.Reading.Types = {u"Moisture"};
        verdict.Reading.Value = u"14.1";
        verdict.Reading.Unit = u"%";
        Watch.ReadingJudged(verdict);
    }

    static inline LinkWatch::Moment Now;
    support::TestDevice Device;
    int Asked = 0;
    LinkWatch Watch{[] { return Now; },
                    [this](const std::string& address, platform::ErrorNumber error) {
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
    for (int tenth = 0; tenth < 20; ++tenth, Now += milliseconds(100))
        Line();
    EXPECT_EQ(Asked, 1);
    Line();
    EXPECT_EQ(Asked, 2);
    Port.LastOpening = platform::PermissionDenied;
    Line();
    EXPECT_EQ(Asked, 3) << "another trouble is looked into at once";
}

TEST_F(WatchedLink, TellsWhatItsSourceSaysOfATrouble) {
    Port.Address = "tcp:meter:5025";
    Port.LastOpening = platform::NotAvailable;
    Port.Trouble = "Connection refused";
    EXPECT_EQ(Line(), "Link down: Com1: tcp:meter:5025: Connection refused, trying again");
    EXPECT_EQ(Asked, 0);
}

TEST_F(WatchedLink, CountsSinceWhenItIsDown) {
    Line();
    Now += seconds(7);
    EXPECT_EQ(Line(), "Link down for 7 s: Com1: waiting for it to open");
    Port.Open = true;
    Line();
    Port.Open = false;
    Line();
    Now += seconds(2);
    EXPECT_EQ(Line(), "Link down for 2 s: Com1: waiting for it to open") << "since it was open";
}

TEST_F(WatchedLink, SaysWhichPortIsUnpluggedAfterASecond) {
    const auto after = [this](seconds time) {
        Line();
        Now += time;
        Line();
        return Watch.PortTrouble();
    };
    Port.LastOpening = platform::FileNotFound;
    EXPECT_EQ(after(seconds(0)), "") << "it has just been chosen";
    EXPECT_EQ(after(seconds(2)), "Com1 is /dev/x: unplugged");
    Port.LastOpening = platform::PermissionDenied;
    EXPECT_EQ(after(seconds(2)), "Com1 is /dev/x: /dev/x fails by 70");
    Port.Address.clear();
    EXPECT_EQ(after(seconds(2)), "Com1: no adapter is plugged in");
    modBluetooth::Receive.LinkWanted = false;
    EXPECT_EQ(after(seconds(2)), "");
}

TEST_F(WatchedLink, IsSilentUnlessSomethingCameWithinAMinute) {
    Line();
    EXPECT_TRUE(Watch.IsSilent()) << "it is down";
    Port.Open = true;
    Line();
    EXPECT_TRUE(Watch.IsSilent()) << "nothing has come";
    Watch.TextReceived(platform::TextSource::Port, u"1");
    Line();
    EXPECT_FALSE(Watch.IsSilent());
    Now += seconds(61);
    Line();
    EXPECT_TRUE(Watch.IsSilent());
}

TEST_F(WatchedLink, OffersAnotherPortWhileItIsDownOrNoneIsChosen) {
    Port.Open = true;
    EXPECT_FALSE(Watch.Line(Port, Held).OffersPorts);
    Port.Open = false;
    EXPECT_TRUE(Watch.Line(Port, Held).OffersPorts);
    modQuorin::SaveSetting(u"ComPort", u"OFF");
    EXPECT_TRUE(Watch.Line(Port, Held).OffersPorts);
}

TEST_F(WatchedLink, IsNotDownWhileNobodyWantsIt) {
    modBluetooth::Receive.LinkWanted = false;
    Line();
    Now += seconds(7);
    Line();
    modBluetooth::Receive.LinkWanted = true;
    EXPECT_EQ(Line(), "Link down: Com1: waiting for it to open");
}

TEST_F(WatchedLink, ShowsWhatBecameOfTheLastReading) {
    Port.Open = true;
    EXPECT_EQ(Line(), "Link open: Com1 (/dev/x); no reading yet");
    Judge(platform::Fate::Taken);
    EXPECT_EQ(Line(), "● Moisture 14.1 % → Wall, " + TimeNow());
    Now += seconds(6);
    Judge(platform::Fate::NoRow);
    Now += seconds(3);
    EXPECT_EQ(Line(), "○ refused: no row of Meter asks for \"Moisture\", 3 s ago");
}

TEST_F(WatchedLink, IsAnAlarmWhereAnOpenListIgnoresAReading) {
    Port.Open = true;
    Judge(platform::Fate::Kept);
    EXPECT_EQ(Watch.Line(Port, Held).Look, LineLook::Plain) << "a person has decided";
    Device.Platform.cboInputField.SetVisible(true);
    Judge(platform::Fate::Kept);
    EXPECT_EQ(Watch.Line(Port, Held).Look, LineLook::Alarm);
}

TEST_F(WatchedLink, ShowsARefusedOneOfABurstBeforeTheTakenOne) {
    Port.Open = true;
    Judge(platform::Fate::NoRow);
    Judge(platform::Fate::Taken);
    Now += milliseconds(4999);
    EXPECT_EQ(Line(), "○ refused: no row of Meter asks for \"Moisture\", 4 s ago");
    Now += milliseconds(1);
    EXPECT_EQ(Line(), "● Moisture 14.1 % → Wall, " + TimeNow());
}

TEST_F(WatchedLink, ForgetsTheReadingsOfARecordThatWasLeft) {
    Port.Open = true;
    Judge(platform::Fate::NoRow);
    modBluetooth::Receive.LinkWanted = false;
    Line();
    modBluetooth::Receive.LinkWanted = true;
    EXPECT_EQ(Line(), "Link open: Com1 (/dev/x); no reading yet");
}

TEST_F(WatchedLink, IsNotQuietWhileCharactersArrive) {
    Port.Open = true;
    Watch.TextReceived(platform::TextSource::Port, u"x");
    EXPECT_EQ(Line(), "Link open: Com1 (/dev/x); characters arrive, but no reading yet");
    Judge(platform::Fate::Taken);
    Now += seconds(60);
    Watch.TextReceived(platform::TextSource::Port, u"x");
    EXPECT_EQ(Line(), "● Moisture 14.1 % → Wall, " + TimeNow() + "; characters arrive, but no reading");
    Now += seconds(60);
    EXPECT_EQ(Line(), "Link open but quiet for 1 min: Com1 (/dev/x); last: ● Moisture 14.1 % → Wall, " + TimeNow());
}

TEST_F(WatchedLink, HearsNothingOfThePortThatWasClosed) {
    Port.Open = true;
    Watch.TextReceived(platform::TextSource::Port, u"x");
    Port.Open = false;
    Line();
    Port.Open = true;
    EXPECT_EQ(Line(), "Link open: Com1 (/dev/x); no reading yet");
}

TEST_F(WatchedLink, GoesByTheCoreForWhatIsNoSerialPort) {
    modQuorin::SaveSetting(u"ComPort", u"SERVER");
    modBluetooth::Ports.LinkOpen = true;
    EXPECT_EQ(Line(), "Link open: RFCOMM server; no reading yet");
    modQuorin::SaveSetting(u"ComPort", u"OFF");
    EXPECT_EQ(Line(), "Link off: no port is chosen");
}

TEST_F(WatchedLink, SaysHowMuchWaitsWhileItIsHeld) {
    Held = true;
    Port.Waiting = 7;
    EXPECT_EQ(Line(), "Link held: two questions are open, 7 characters are waiting");
}

TEST_F(WatchedLink, IsDueFiveTimesASecond) {
    EXPECT_TRUE(Watch.IsDue());
    Now += milliseconds(199);
    EXPECT_FALSE(Watch.IsDue());
    Now += milliseconds(1);
    EXPECT_TRUE(Watch.IsDue());
}

TEST_F(WatchedLink, SaysThatAValueIsOutsideOfALimit) {
    const ValueLimits limits(u"COLUMN|WARNHIGH|FAILHIGH\nWall|10|14\n", {u"Wall"});
    Watch.Use(limits);
    modBluetooth::Ports.LinkOpen = true;
    Port.Open = true;
    Judge(platform::Fate::Taken);
    EXPECT_EQ(Line(), "● Moisture 14.1 % → Wall, " + TimeNow());
    Judge(platform::Fate::Taken, 1);
    EXPECT_EQ(Line(), "✖ fail: Moisture 14.1 % → Wall; above the limit 14, 0 s ago");
    EXPECT_EQ(Watch.Line(Port, false).Look, LineLook::Alarm);
}

} // namespace
} // namespace companion
