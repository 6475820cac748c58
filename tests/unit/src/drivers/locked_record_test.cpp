// SPDX-License-Identifier: MIT
// A record on screen whose line database another program reads or locks.
#include "src/drivers/record_editor.h"
#include "src/storage/keyed_tables.h"
#include "src/view/display_state.h"
#include "tests/support/other_tool.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using namespace modFileSystem;
using Told = std::vector<std::pair<Text, Text>>;

class LockedRecord : public support::Program {
protected:
    LockedRecord() {
        InstallMeter("Place|1||||||\nMoisture|1||Moisture||||\n");
        OpenDownload("Place|Moisture\n|\n");
        CreateTable(u".\\Quorin\\test.pdb", u"Place|Moisture", u"r", u"TEXT", u"QVRN");
        for (const char16_t* place : {u"one", u"two", u"three"}) {
            AddRow(-1);
            SetField(u"PLACE", place);
            SaveRow();
        }
        GotoRow(2);
        ShowRecord();
        Tool.Open(Device.Folder.Path() / "Databases" / "test.sqlite");
        Patience().Longest = std::chrono::milliseconds(50);
    }
    ~LockedRecord() override { CloseTable(); }

    backends::LockWait& Patience() { return Device.Host.hostDatabases.Patience; }
    void LetGo() {
        Tool.LetGo();
        Patience().Renew();
    }
    void Reading() {
        Device.Main().SetCell(1, 1, u"23.4");
        Table.RecordDirty = true;
    }
    std::vector<Text> Rows() {
        std::vector<Text> rows;
        for (std::int32_t line = 2; line <= FileLineCount(Table.TableFile); ++line)
            rows.push_back(ReadFileLine(Table.TableFile, line));
        return rows;
    }

    const Told OneFailure = {{u"test", u"another program is using it"}};
    const std::vector<Text> OldRows = {u"one|", u"two|", u"three|"};
    support::OtherTool Tool;
};

class RecordCommandsUnderALock : public LockedRecord, public testing::WithParamInterface<const char16_t*> {};

TEST_P(RecordCommandsUnderALock, LeaveTheRecordAndSaveItOnceTheLockIsGone) {
    Reading();
    Tool.Lock();
    RecordCommand(GetParam());
    EXPECT_EQ(Device.Did.Unsaved, OneFailure);
    EXPECT_EQ(Column(1), (std::vector<Text>{u"two", u"23.4"}));
    EXPECT_EQ(TitleCell(1), u"2/3");
    EXPECT_TRUE(Table.RecordDirty);
    LetGo();
    EXPECT_EQ(Rows(), OldRows);
    RecordCommand(u"NEXT");
    EXPECT_EQ(Device.Did.Unsaved, OneFailure);
    EXPECT_EQ(TitleCell(1), u"3/3");
    EXPECT_EQ(Rows(), (std::vector<Text>{u"one|", u"two|23.4", u"three|"}));
}

INSTANTIATE_TEST_SUITE_P(All, RecordCommandsUnderALock,
                         testing::Values(u"NEXT", u"PREV", u"FIRST", u"LAST", u"NEW", u"INSERT", u"DELETE"));

TEST_F(LockedRecord, StaysWhenAnotherNumberIsAskedFor) {
    Reading();
    Tool.Lock();
    EXPECT_EQ(GoToRecord(1), u"another program is using or has changed the table");
    EXPECT_EQ(Device.Did.Unsaved, OneFailure);
    EXPECT_EQ(Column(1), (std::vector<Text>{u"two", u"23.4"}));
    EXPECT_EQ(TitleCell(1), u"2/3");
    LetGo();
    EXPECT_EQ(GoToRecord(1), u"");
    EXPECT_EQ(TitleCell(1), u"1/3");
    EXPECT_EQ(Rows(), (std::vector<Text>{u"one|", u"two|23.4", u"three|"}));
}

TEST_F(LockedRecord, StaysUnchangedWhenAnotherNumberIsAskedFor) {
    Tool.Lock();
    EXPECT_EQ(GoToRecord(3), u"another program is using or has changed the table");
    EXPECT_EQ(Column(1), (std::vector<Text>{u"two", u""}));
    EXPECT_EQ(TitleCell(1), u"2/3");
}

class RecordCommandsWithoutAChange : public LockedRecord, public testing::WithParamInterface<const char16_t*> {};

TEST_P(RecordCommandsWithoutAChange, LeaveTheRecordOnTheScreenWhileItIsLocked) {
    Device.WillAnswer(platform::BoxAnswer::Yes);
    Device.WillAnswer(platform::BoxAnswer::Yes);
    Tool.Lock();
    RecordCommand(GetParam());
    EXPECT_EQ(Column(1), (std::vector<Text>{u"two", u""}));
    EXPECT_EQ(TitleCell(1), u"2/3");
    LetGo();
    RecordCommand(u"NEXT");
    EXPECT_EQ(TitleCell(1), u"3/3");
    EXPECT_EQ(Column(1), (std::vector<Text>{u"three", u""}));
    EXPECT_EQ(Rows(), OldRows);
}

INSTANTIATE_TEST_SUITE_P(All, RecordCommandsWithoutAChange,
                         testing::Values(u"NEXT", u"PREV", u"FIRST", u"LAST", u"NEW", u"INSERT", u"DELETE"));

TEST_F(LockedRecord, ThatAReaderLocksIsReportedAndShownAsInTheFile) {
    Reading();
    Tool.Read();
    SaveRecordFromGrid();
    EXPECT_EQ(Device.Did.Unsaved, OneFailure);
    EXPECT_EQ(GetField(u"MOISTURE"), u"");
    EXPECT_FALSE(Table.RecordDirty);
    Tool.LetGo();
    EXPECT_EQ(Rows(), OldRows);
}

TEST_F(LockedRecord, ThatIsLeftIsTold) {
    Reading();
    Tool.Lock();
    LeaveRecord();
    EXPECT_EQ(Device.Did.Unsaved, OneFailure);
}

/// A row that a search skipped would seem to be missing, and would be added a second time.
TEST_F(LockedRecord, StopsAWalkOverTheTable) {
    Tool.Lock();
    EXPECT_THROW(FindRow(u"Place=three"), backends::ProgramOver);
}

/// The content of a line that could not be read because of the lock is unknown, also after the lock is released.
TEST_F(LockedRecord, ReadWithoutAWaitStopsTheProgramAndNamesTheLock) {
    Tool.Lock();
    std::int32_t line = 2;
    const Text failure = support::FailureOf([&] { ReadFileLine(Table.TableFile, line); });
    EXPECT_EQ(failure, u"Can't read .\\Quorin\\test: another program is using it");
    Tool.LetGo();
    EXPECT_EQ(support::FailureOf([&] { FileLineCount(Table.TableFile); }), failure);
}

TEST_F(LockedRecord, StopsAnOpening) {
    CloseTable();
    Tool.Lock();
    EXPECT_THROW(OpenTable(u".\\Quorin\\test.pdb", u"r", u"TEXT", u"QVRN"), backends::ProgramOver);
}

/// The gap between two ticks would be treated as a sleep, and the port opened again.
TEST_F(LockedRecord, IsWaitedForWithoutAnEventOrASleep) {
    frmQuorin::Form.lastTimerEvent = -1000;
    Reading();
    Tool.Lock();
    int boxes = 0;
    Patience().Waiting = [&] { boxes += Device.Platform.boxes.Current() != nullptr ? 1 : 0; };
    RecordCommand(u"NEXT");
    EXPECT_EQ(boxes, 0);
    Device.Platform.loop.RaiseRound();
    EXPECT_EQ(frmQuorin::Form.lastTimerEvent, Device.Platform.clock.SteadySeconds());
    LetGo();
}

} // namespace
} // namespace modQuorin
