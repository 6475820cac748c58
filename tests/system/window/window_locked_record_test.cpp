// SPDX-License-Identifier: MIT
// A record in the window whose line database another program locks: while the program waits for it, the window responds
// and the form does not.
#include "backends/input/gestures.h"
#include "src/drivers/record_editor.h"
#include "src/link/receive.h"
#include "src/storage/keyed_tables.h"
#include "src/view/display_state.h"
#include "tests/support/other_tool.h"
#include "tests/system/window/watched_window.h"

namespace windowtest {
namespace {

using namespace modFileSystem;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string Waits = "Another program is using this file: waiting…";

/// Counts the paint events of a widget.
class Paintings final : public QObject {
public:
    explicit Paintings(QWidget& widget) { widget.installEventFilter(this); }
    int Count = 0;

private:
    bool eventFilter(QObject*, QEvent* event) override {
        Count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

/// The second of three records of a line database, with an unsaved value, and another program that may lock it.
class LockedRecordInTheWindow : public WatchedWindow {
protected:
    LockedRecordInTheWindow() {
        Device.Platform.settings.Save(u"Quorin", u"Settings", u"ComPort", u"Com1");
        OpenRecord("Place|Moisture|Remark\n||\n");
        CreateTable(u".\\Quorin\\test.pdb", u"Place|Moisture|Remark", u"r", u"TEXT", u"QVRN");
        for (const char16_t* place : {u"one", u"two", u"three"}) {
            AddRow(-1);
            SetField(u"PLACE", place);
            SaveRow();
        }
        GotoRow(2);
        modQuorin::ShowRecord();
        Pass(1100); // until the port is open
        Tool.Open(Device.Folder.Path() / "Databases" / "test.sqlite");
        Main().SetCell(1, 1, u"23.4");
        Table.RecordDirty = true;
        Settle();
        Patience().Longest = std::chrono::milliseconds(60);
    }
    ~LockedRecordInTheWindow() override { CloseTable(); }

    backends::LockWait& Patience() { return Device.Host.hostDatabases.Patience; }
    /// Makes the wait end once `allWasSeen` returns true. It is called in the wait each time, after the window's own
    /// routine.
    void WaitUntil(std::function<bool()> allWasSeen) {
        Patience().Longest = std::chrono::minutes(1);
        Patience().Waiting = [this, own = Patience().Waiting, look = std::move(allWasSeen)] {
            own();
            if (look())
                Patience().Longest = {};
        };
    }
    void NextRecord() {
        EXPECT_EQ(backends::Choose(Device.Hand, u"Next Record"), "");
        Settle();
    }
    std::vector<Text> Rows() {
        std::vector<Text> rows;
        for (std::int32_t line = 2; line <= FileLineCount(Table.TableFile); ++line)
            rows.push_back(ReadFileLine(Table.TableFile, line));
        return rows;
    }

    support::OtherTool Tool;
};

TEST_F(LockedRecordInTheWindow, PaintsAndSaysWhatIsWaitedFor) {
    Paintings paintings(Grid());
    bool isSaid = false;
    int before = -1;
    WaitUntil([&] {
        isSaid = isSaid || LinkLine() == Waits;
        before = before < 0 ? paintings.Count : before;
        Grid().update(); // as when a window above it closes
        return isSaid && paintings.Count > before;
    });
    Tool.Lock();
    NextRecord();
    EXPECT_TRUE(isSaid);
    EXPECT_GE(before, 0);
    EXPECT_GT(paintings.Count, before) << "what was uncovered stays blank";
    EXPECT_NE(LinkLine(), Waits) << "nothing is waited for any more";
}

TEST_F(LockedRecordInTheWindow, IsToldInRedAndStaysOnTheScreenUntilItCanBeSaved) {
    Tool.Lock();
    NextRecord();
    EXPECT_THAT(Device.Did.Unsaved, ElementsAre(testing::Pair(u"test", u"another program is using it")));
    EXPECT_THAT(RedLine(), HasSubstr("test"));
    EXPECT_THAT(RedLine(), HasSubstr("another program is using it"));
    EXPECT_EQ(Cell(0, 1), u"two");
    EXPECT_EQ(Cell(1, 1), u"23.4");
    Tool.LetGo();
    EXPECT_THAT(Rows(), ElementsAre(u"one||", u"two||", u"three||"));
    NextRecord();
    EXPECT_EQ(Cell(0, 1), u"three");
    EXPECT_THAT(Rows(), ElementsAre(u"one||", u"two|23.4|", u"three||"));
    EXPECT_EQ(Device.Did.Unsaved.size(), 1U);
}

/// A tick is due all the time, the port has received text, and a user clicks: all of these are handled after the wait.
TEST_F(LockedRecordInTheWindow, RaisesNothingOfTheApplicationMeanwhile) {
    const Text line = u"something\r\n";
    int looks = 0;
    const float polled = modBluetooth::Receive.LastPollTime;
    WaitUntil([&] {
        if (looks++ == 0) {
            Device.Platform.serial.Arrive(line);
            const QPoint place = Grid().mapTo(Grid().window(), Middle(2, 1));
            QTest::mouseClick(Grid().window()->windowHandle(), Qt::LeftButton, {}, place);
        }
        Device.Platform.loop.Jump(100);
        EXPECT_EQ(modBluetooth::Receive.LastPollTime, polled) << "a tick of the link";
        EXPECT_EQ(modBluetooth::Receive.ReadyText, u"") << "a receive event";
        EXPECT_FALSE(Field().Visible()) << "a tap";
        return looks > 20;
    });
    Tool.Lock();
    EXPECT_EQ(backends::Choose(Device.Hand, u"Next Record"), "");
    EXPECT_GT(looks, 20);
    Settle();
    Pass(600);
    EXPECT_NE(modBluetooth::Receive.LastPollTime, polled);
    EXPECT_EQ(modBluetooth::Receive.ReadyText, line);
}

/// After a sleep of the device the port is closed and opened again, and what arrives meanwhile is lost. A wait must not
/// have this effect.
TEST_F(LockedRecordInTheWindow, IsNoSleepOfTheDeviceHoweverLongItIs) {
    Pass(1000);
    ASSERT_EQ(modBluetooth::Receive.LinkState, modBluetooth::LinkPhase::Open);
    WaitUntil([this] {
        Device.Platform.loop.Jump(5000);
        return true;
    });
    Tool.Lock();
    NextRecord();
    ASSERT_EQ(Device.Did.Unsaved.size(), 1U);
    for (int tick = 0; tick < 4; ++tick) {
        Pass(500);
        EXPECT_EQ(modBluetooth::Receive.LinkState, modBluetooth::LinkPhase::Open) << tick;
        EXPECT_TRUE(Device.Platform.serial.PortOpen()) << tick;
    }
}

} // namespace
} // namespace windowtest
