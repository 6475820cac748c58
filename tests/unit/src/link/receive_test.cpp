// SPDX-License-Identifier: MIT
#include "src/link/receive.h"

#include "src/blob/decoding.h"
#include "src/blob/framing.h"
#include "src/link/mailbox.h"
#include "src/link/ports.h"
#include "src/storage/settings.h"
#include "src/view/grids.h"
#include "tests/support/heard_readings.h"
#include "tests/unit/src/link/noted_port.h"

namespace modBluetooth {
namespace {

using modQuorin::SaveSetting;
using testing::ElementsAre;
using testing::IsEmpty;

const Text Hello = u"[BLob]\r\n[CONNECT \"A1\"]\r\n[/BLob]\r\n";
const Text Reading =
    u"[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"23.4\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";

/// A driver that takes readings, its download open, and the link over a simulated port open.
class Receiving : public support::Program {
protected:
    Receiving() {
        SaveSetting(u"ComPort", u"Com1");
        InstallMeter();
        OpenDownload("");
        Device.Tick(500);
    }
    void Arrive(const Text& text) {
        Device.Platform.serial.Arrive(text);
        Settle();
    }
    Text Moisture() { return Cell(1, 1); }
};

TEST_F(Receiving, ResultIsInTheRecordAtTheFirstOrSecondTick) {
    Arrive(Reading);
    EXPECT_TRUE(Receive.BlobEndSeen);
    EXPECT_EQ(Moisture(), u"");
    Device.Tick(1000);
    EXPECT_EQ(Moisture(), u"23.4 %");
    EXPECT_EQ(Receive.ReadyText, u"");
}

TEST_F(Receiving, WaitsForHalfASecondSinceTheLastFullTick) {
    Device.Tick(250);
    Arrive(Reading);
    Device.Tick(250); // the tick half a second after the last full one
    EXPECT_EQ(Moisture(), u"23.4 %");
}

/// The seconds by which the machine's clock is changed right before a reading, as by a time server or at the end of
/// summer time.
class ClockThatIsSet : public Receiving, public testing::WithParamInterface<int> {};

TEST_P(ClockThatIsSet, HoldsUpNoReadingAndIsNoSleep) {
    Device.Tick(600);
    Device.Platform.clock.SetWall(GetParam());
    Arrive(Reading);
    Device.Tick(1000);
    EXPECT_EQ(Moisture(), u"23.4 %");
    EXPECT_EQ(Receive.LinkState, LinkPhase::Open);
    EXPECT_TRUE(Ports.LinkOpen);
}

INSTANTIATE_TEST_SUITE_P(Seconds, ClockThatIsSet, testing::Values(-3600, -1, 1, 3600, 86400));

TEST_F(Receiving, StampsARecordWithWhatTheMachinesClockShows) {
    const auto before = Device.Platform.clock.Now();
    Device.Platform.clock.SetWall(-3600);
    EXPECT_EQ(Device.Platform.clock.Now().Hour, before.Hour - 1);
}

/// A reading in two pieces. The cut is before each of its last eleven characters in turn.
class SplitReading : public Receiving, public testing::WithParamInterface<int> {};

TEST_P(SplitReading, ComesTogether) {
    const std::size_t place = Reading.size() - static_cast<std::size_t>(GetParam());
    Arrive(Reading.substr(0, place));
    EXPECT_FALSE(Receive.BlobEndSeen);
    Arrive(Reading.substr(place));
    EXPECT_TRUE(Receive.BlobEndSeen);
    Device.Tick(1000);
    EXPECT_EQ(Moisture(), u"23.4 %");
}

INSTANTIATE_TEST_SUITE_P(Pieces, SplitReading, testing::Range(1, 12));

TEST_F(Receiving, LinesThatEndOtherwiseWait) {
    Arrive(u"[BLob]\n[/BLob]\n");
    EXPECT_EQ(Receive.RxText, u"[BLob]\n[/BLob]\n");
    EXPECT_EQ(Receive.ReadyText, u"");
    Arrive(u"\r\n");
    EXPECT_EQ(Receive.RxText, u"");
    EXPECT_FALSE(Receive.BlobEndSeen);
}

// This test would not end if each arrival searched the text from the first character.
TEST_F(Receiving, TextWithoutAnyLineEndIsSearchedOnce) {
    Receive.RxText.assign(4000000, u'~');
    for (int i = 0; i < 20000; ++i) {
        Receive.RxText += u"~\r";
        ASSERT_FALSE(TakeCompleteLines());
    }
    Receive.RxText += u"\nrest";
    EXPECT_TRUE(TakeCompleteLines());
    EXPECT_EQ(Receive.ReadyText.size(), 4040001U);
    EXPECT_EQ(Receive.RxText, u"rest");
}

TEST_F(Receiving, EndTagOfAnotherCaseWaitsForOneThatIsRight) {
    Arrive(u"[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"1\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLOB]\r\n");
    Device.Tick(2000);
    EXPECT_EQ(Moisture(), u"");
    EXPECT_FALSE(Receive.ReadyText.empty());
    Arrive(Hello);
    Device.Tick(1000);
    EXPECT_EQ(Moisture(), u"1 %");
}

TEST_F(Receiving, EndTagInTheMiddleOfAChunkWaitsForOneAtAnEnd) {
    Arrive(Reading + u"noise\r\n");
    Device.Tick(2000);
    EXPECT_EQ(Moisture(), u"");
    Arrive(Hello);
    Device.Tick(1000);
    EXPECT_EQ(Moisture(), u"23.4 %");
}

TEST_F(Receiving, WantsTheLinkEvenAfterABack) {
    Receive.LinkWanted = false;
    Arrive(u"x");
    EXPECT_TRUE(Receive.LinkWanted);
}

TEST_F(Receiving, WantsTheLinkForAReadingTakenAgain) {
    Receive.LinkWanted = false;
    TakeAgain(u"[BLob]\r[/BLob]\r");
    EXPECT_TRUE(Receive.LinkWanted);
}

TEST_F(Receiving, TextIsReportedWithItsSource) {
    const support::HeardReadings heard(Device);
    Arrive(u"half a ");
    TakeAgain(u"[BLob]\r[/BLob]\r");
    Arrive(u"line\r\n");
    EXPECT_THAT(heard.Texts, ElementsAre(testing::Pair(platform::TextSource::Port, u"half a "),
                                         testing::Pair(platform::TextSource::Port, u"line\r\n"),
                                         testing::Pair(platform::TextSource::Again, u"[BLob]\r\n[/BLob]\r\n")));
}

/// Whoever keeps what was received has time for it before a tone sounds.
TEST_F(Receiving, DecodingIsReportedBeforeTheToneOfABatch) {
    support::HeardReadings heard(Device);
    std::vector<std::size_t> tones;
    heard.AtDecoding = [&] { tones.push_back(Device.Did.Tones.size()); };
    Device.WillAnswer(platform::BoxAnswer::Yes);
    Arrive(Reading + Reading);
    EXPECT_THAT(tones, IsEmpty());
    Device.Tick(1000);
    EXPECT_THAT(tones, ElementsAre(0U));
    EXPECT_FALSE(Device.Did.Tones.empty());
}

TEST_F(Receiving, TextThatComesDuringAQuestionIsLost) {
    const support::HeardReadings heard(Device);
    Device.Main().SetCell(1, 1, u"old");
    Device.WillAnswer(platform::BoxAnswer::Yes);
    Device.WhileABoxIsOpen([this] { Arrive(u"[BLob]\r\n[RESULT_TYPE \"Remark\"]\r\n"); });
    Arrive(Reading);
    Device.Tick(1000);
    EXPECT_EQ(Moisture(), u"23.4 %");
    EXPECT_EQ(Receive.ReadyText, u"");
    EXPECT_EQ(modBLob::Framing.BlobBuffer, u"");
    EXPECT_THAT(heard.Emptied, ElementsAre(u"[BLob]\r\n[RESULT_TYPE \"Remark\"]\r\n"));
}

/// Ticks go on while a question is open. Text that was decoded before the question is not decoded again.
TEST_F(Receiving, IsAskedOnceHoweverLongAQuestionStands) {
    Device.Main().SetCell(1, 1, u"old");
    Device.WillAnswer(platform::BoxAnswer::Yes);
    Device.WhileABoxIsOpen([this] {
        Device.Tick(2000);
        Arrive(u"a line without an end");
        EXPECT_FALSE(Receive.BlobEndSeen);
        Device.Tick(2000);
    });
    Arrive(Reading);
    Device.Tick(1000);
    EXPECT_EQ(Device.Did.Boxes.size(), 1U);
    EXPECT_EQ(Moisture(), u"23.4 %");
}

/// The mailbox was used before the port was chosen.
TEST_F(Receiving, LeavesTheMailboxAlone) {
    SetMailboxPath();
    Device.Folder.Put("c/ipcout.txt", modStringTools::ToBytes(Reading));
    Device.Tick(3000);
    EXPECT_TRUE(Device.Folder.Has("c/ipcout.txt"));
    EXPECT_EQ(Moisture(), u"");
}

TEST_F(Receiving, AroundMidnightTheDecodingWaitsForTheSameTimeOfDay) {
    Device.SetTime("2007-03-05T23:59:58");
    Device.Tick(500);
    Arrive(Reading);
    Device.SetTime("2007-03-06T00:00:01");
    Device.Tick(60000);
    EXPECT_EQ(Moisture(), u"");
    EXPECT_FALSE(Receive.ReadyText.empty());
    Device.SetTime("2007-03-06T23:59:58");
    Device.Tick(1000); // the first tick treats the day as a sleep
    EXPECT_EQ(Moisture(), u"23.4 %");
}

TEST_F(Receiving, DroppedPortIsOpenAgainAtTheNextTick) {
    Device.Platform.serial.Drop();
    Device.Tick(500);
    EXPECT_TRUE(Ports.LinkOpen);
    EXPECT_TRUE(Device.Platform.serial.PortOpen());
}

TEST_F(Receiving, TextBeforeADropIsKept) {
    Arrive(Reading.substr(0, 20));
    Device.Platform.serial.Drop();
    Device.Tick(500);
    Arrive(Reading.substr(20));
    Device.Tick(1000);
    EXPECT_EQ(Moisture(), u"23.4 %");
}

TEST_F(Receiving, BackTakesThePortDownAtTheNextTickAndLeavesTheTitle) {
    modQuorin::GoBack();
    EXPECT_TRUE(Device.Platform.serial.PortOpen());
    Device.Tick(500);
    EXPECT_FALSE(Device.Platform.serial.PortOpen());
    EXPECT_FALSE(Ports.LinkOpen);
    EXPECT_EQ(TitleCell(), u"Downloads");
    EXPECT_EQ(Receive.LinkState, LinkPhase::Open);
}

TEST_F(Receiving, RestartAfterASleepTakesThreeTicks) {
    Receive.LinkState = LinkPhase::Reset;
    HandleBlueTimer();
    EXPECT_FALSE(Device.Platform.serial.PortOpen());
    EXPECT_EQ(Receive.LinkState, LinkPhase::Reset);
    EXPECT_EQ(TitleCell(), u"Bluetooth :-(");
    HandleBlueTimer();
    EXPECT_EQ(Receive.LinkState, LinkPhase::Open);
    EXPECT_FALSE(Ports.LinkOpen);
    HandleBlueTimer();
    EXPECT_TRUE(Ports.LinkOpen);
    EXPECT_EQ(TitleCell(), u"Bluetooth :-)");
}

TEST_F(Receiving, StateOfTheLinkIsWrittenOnlyWhenItChanges) {
    EXPECT_EQ(TitleCell(), u"Bluetooth :-)");
    Device.Title().SetCell(0, 0, u"mine");
    Device.Tick(2000);
    EXPECT_EQ(TitleCell(), u"mine");
}

TEST_F(Receiving, PortThatFailsIsTriedAtEachTick) {
    Device.Platform.serial.Drop();
    Device.Platform.serial.FailOpenings(2);
    Device.Tick(1000);
    EXPECT_FALSE(Ports.LinkOpen);
    EXPECT_EQ(TitleCell(), u"Bluetooth :-(");
    Device.Tick(500);
    EXPECT_TRUE(Ports.LinkOpen);
    EXPECT_THAT(Device.Did.Boxes, IsEmpty());
}

TEST_F(Receiving, TurnedOffTheLinkIsShownAsDownAndThePortStaysOpen) {
    SaveSetting(u"ComPort", u"OFF");
    Device.Tick(500);
    EXPECT_FALSE(Ports.LinkOpen);
    EXPECT_EQ(TitleCell(), u"Bluetooth :-(");
    EXPECT_TRUE(Device.Platform.serial.PortOpen());
}

using AnyPort = OnANotedPort;

/// If more text raised an event during the drain, its handler would find the drain half done.
TEST_F(AnyPort, IsDrainedWithoutAFurtherEvent) {
    Port.Chunks = {u"a line\r\n", u"rest"};
    HandleBlueOnComm();
    EXPECT_THAT(Port.Asked, ElementsAre(u"threshold 0", u"read a line\r\n", u"read rest", u"threshold 1"));
    EXPECT_EQ(Receive.ReadyText, u"a line\r\n");
    EXPECT_EQ(Receive.RxText, u"rest");
}

TEST_F(AnyPort, IsReadForCharactersAlone) {
    for (const std::int32_t event : {1, 3, 5}) {
        Port.Event = platform::PortEvent{event};
        Port.Chunks = {u"x"};
        HandleBlueOnComm();
        EXPECT_THAT(Port.Asked, IsEmpty()) << event;
        EXPECT_FALSE(Receive.LinkWanted) << event;
    }
}

/// The form's events are also handled while an instrument sends without a pause.
TEST_F(AnyPort, LetsTheFormGoOnBetweenTwoReadings) {
    modPDAUI::RepaintGrids(false);
    Device.Platform.loop.Jump(1000);
    ASSERT_TRUE(modPDAUI::Grids.RepaintPending);
    Port.Chunks = {u"x"};
    HandleBlueOnComm();
    EXPECT_FALSE(modPDAUI::Grids.RepaintPending);
}

class NoLink : public support::Program {};

TEST_F(NoLink, TicksDoNothingWithTheLinkOff) {
    InstallMeter();
    OpenDownload("");
    Device.Tick(3000);
    EXPECT_FALSE(Ports.LinkOpen);
    EXPECT_EQ(TitleCell(), u"Download");
}

TEST_F(NoLink, DriverWithoutAResultFieldDoesNotArmIt) {
    InstallMeter("Place|1||||||\n");
    OpenDownload("");
    EXPECT_FALSE(Receive.LinkWanted);
    EXPECT_EQ(Receive.LinkState, LinkPhase::Idle);
}

TEST_F(NoLink, LinkTraceArmsIt) {
    modQuorin::MenuEvent(u"Bluetooth Debug...");
    EXPECT_TRUE(Receive.LinkWanted);
    EXPECT_EQ(Receive.LinkState, LinkPhase::Open);
}

TEST_F(NoLink, StateThatIsNoStateKeepsTheLinkDown) {
    SaveSetting(u"ComPort", u"Com1");
    Receive.LinkWanted = true;
    Device.Tick(1000);
    EXPECT_FALSE(Ports.LinkOpen);
}

} // namespace
} // namespace modBluetooth
