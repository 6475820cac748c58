// SPDX-License-Identifier: MIT
#include "src/drivers/record_editor.h"

#include "src/app/commands.h"
#include "src/drivers/inf_tables.h"
#include "src/view/inf_fields.h"
#include "tests/support/program.h"

#include <filesystem>

namespace modQuorin {
namespace {

using modFileSystem::Table;
using platform::BoxAnswer;
using testing::ElementsAre;

const std::string Header = "Place|Moisture|Remark\n";

class Record : public support::Program {
protected:
    Record() { InstallMeter(); }
    void OpenFive() { OpenDownload(Header + "1||\n2||\n3||\n4||\n5||\n"); }
    Text Position() { return TitleCell(1); }
    std::string Download() { return File("qrn0001.txt"); }
};

TEST_F(Record, CommandsWalk) {
    OpenFive();
    EXPECT_EQ(Position(), u"1/5");
    Choose(u"Next Record");
    EXPECT_EQ(Position(), u"2/5");
    EXPECT_EQ(Cell(0, 1), u"2");
    Choose(u"Last Record");
    EXPECT_EQ(Position(), u"5/5");
    Choose(u"Previous Record");
    EXPECT_EQ(Position(), u"4/5");
    Choose(u"First Record");
    EXPECT_EQ(Position(), u"1/5");
    EXPECT_EQ(Download(), Header + "1||\n2||\n3||\n4||\n5||\n");
}

/// The changed record is kept in a file beside. The record that has its place now was never on the screen.
TEST_F(Record, InWhosePlaceAnotherProgramHasPutItsOwnIsNotDeleted) {
    OpenFive();
    Choose(u"Next Record");
    Device.Main().SetCell(1, 1, u"23.4 %");
    const std::string others = Header + "1||\ntheirs|8|\n3||\n4||\n5||\n";
    Device.Folder.Put("Quorin/new", others);
    std::filesystem::rename(Device.Folder.Path() / "Quorin/new", Device.Folder.Path() / "Quorin/qrn0001.txt");
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::Yes);
    Choose(u"Delete Record");
    EXPECT_TRUE(Device.Did.Boxes.empty());
    EXPECT_EQ(Download(), others);
    EXPECT_EQ(Cell(0, 1), u"theirs");
    Choose(u"First Record");
    EXPECT_EQ(Download(), others);
}

TEST_F(Record, OfANumberIsShownAfterTheOneInHandIsSaved) {
    OpenFive();
    Tap(2, 1);
    Type(u"edited");
    EXPECT_EQ(GoToRecord(4), u"");
    EXPECT_FALSE(Device.Platform.txtInputField.Visible());
    EXPECT_EQ(Position(), u"4/5");
    EXPECT_EQ(Column(1), (std::vector<Text>{u"4", u"", u""}));
    EXPECT_EQ(Download(), Header + "1||edited\n2||\n3||\n4||\n5||\n");
    EXPECT_EQ(GoToRecord(1), u"");
    EXPECT_EQ(Column(1), (std::vector<Text>{u"1", u"", u"edited"}));
}

TEST_F(Record, OfANumberThatTheTableLacksIsRefused) {
    OpenFive();
    Choose(u"Next Record");
    for (const std::int32_t number : {0, 6, -1}) {
        EXPECT_EQ(GoToRecord(number), u"there is no record " + modStringTools::NumberText(number));
        EXPECT_EQ(Position(), u"2/5");
        EXPECT_EQ(Column(1), (std::vector<Text>{u"2", u"", u""}));
    }
}

TEST_F(Record, OfANumberIsRefusedWhereNoDownloadIsOnTheScreen) {
    OpenFive();
    GoBack();
    EXPECT_EQ(GoToRecord(2), u"no record of a download is on the screen");
}

/// The table on the screen is the one to which the numbers belong, not the driver's that the editor has open.
TEST_F(Record, OfADriverIsNotShownByItsNumber) {
    InstallMeter();
    OpenInfEditor(u"Meter");
    ASSERT_EQ(Screen(), ScrInfRecord);
    ASSERT_EQ(Position(), u"1/3");
    EXPECT_EQ(GoToRecord(2), u"no record of a download is on the screen");
    EXPECT_EQ(Position(), u"1/3");
}

/// Its row number counts the lines that the file had when it was read.
TEST_F(Record, WhoseRowAnotherProgramTookAwayIsNotShown) {
    OpenFive();
    Device.Main().SetCell(1, 1, u"23.4 %");
    Device.Folder.Put("Quorin/new", Header + "1||\n2||\n");
    std::filesystem::rename(Device.Folder.Path() / "Quorin/new", Device.Folder.Path() / "Quorin/qrn0001.txt");
    EXPECT_EQ(GoToRecord(5), u"another program is using or has changed the table");
    EXPECT_EQ(Position(), u"1/2");
    EXPECT_EQ(Download(), Header + "1|23.4 %|\n2||\n");
}

/// The row that has its place now was never on the screen: a person sees it before another one.
TEST_F(Record, InWhosePlaceAnotherProgramHasPutItsOwnIsShown) {
    OpenFive();
    Choose(u"Next Record");
    Device.Main().SetCell(1, 1, u"23.4 %");
    const std::string others = Header + "1||\ntheirs|8|\n3||\n4||\n5||\n";
    Device.Folder.Put("Quorin/new", others);
    std::filesystem::rename(Device.Folder.Path() / "Quorin/new", Device.Folder.Path() / "Quorin/qrn0001.txt");
    EXPECT_EQ(GoToRecord(4), u"another program is using or has changed the table");
    EXPECT_EQ(Position(), u"2/5");
    EXPECT_EQ(Cell(0, 1), u"theirs");
    EXPECT_EQ(Download(), others);
    EXPECT_EQ(GoToRecord(4), u"");
    EXPECT_EQ(Position(), u"4/5");
}

TEST_F(Record, CommandsAreTakenInAnyCase) {
    OpenFive();
    RecordCommand(u"nExT");
    EXPECT_EQ(Position(), u"2/5");
}

TEST_F(Record, NextOnTheLastOneOnlySavesTheEdit) {
    OpenFive();
    Choose(u"Last Record");
    Tap(2, 1);
    Type(u"edited");
    Choose(u"Next Record");
    EXPECT_EQ(Position(), u"5/5");
    EXPECT_EQ(Download(), Header + "1||\n2||\n3||\n4||\n5||edited\n");
}

TEST_F(Record, EveryCommandSavesTheOneInHand) {
    OpenFive();
    Device.Main().SetCell(1, 1, u"quietly changed");
    Choose(u"Next Record");
    EXPECT_EQ(Download(), Header + "1|quietly changed|\n2||\n3||\n4||\n5||\n");
}

/// On a full disk no record is added. The values that were copied for it must not go into the last record.
TEST_F(Record, NewOneThatCantBeAddedLeavesTheOthersAlone) {
    InstallMeter("Place|1|1|||||\nMoisture|1||||||\nRemark|1||||||\n");
    OpenDownload(Header + "1|a|\n2|b|\n");
    Device.Host.faults.FailNext(1);
    Choose(u"New Record");
    EXPECT_EQ(Position(), u"2/2");
    Choose(u"First Record");
    EXPECT_EQ(Download(), Header + "1|a|\n2|b|\n");
    Choose(u"New Record");
    EXPECT_EQ(Position(), u"3/3");
    GoBack();
    EXPECT_EQ(Download(), Header + "1|a|\n2|b|\n2||\n");
}

TEST_F(Record, InsertPutsABlankOneBeforeTheCurrentOne) {
    OpenFive();
    Choose(u"Next Record");
    Choose(u"Next Record");
    Choose(u"Insert Record");
    EXPECT_EQ(Position(), u"3/6");
    EXPECT_THAT(Column(1), ElementsAre(u"", u"", u""));
    Choose(u"Next Record");
    EXPECT_EQ(Cell(0, 1), u"3");
    EXPECT_EQ(Position(), u"4/6");
}

TEST_F(Record, DeleteAsksTwiceAndShowsTheOneThatFollows) {
    OpenFive();
    Choose(u"Next Record");
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::Yes);
    Choose(u"Delete Record");
    EXPECT_THAT(Device.Did.Messages(), ElementsAre(u"Delete Record?", u"Are you sure?"));
    EXPECT_EQ(Position(), u"2/4");
    EXPECT_EQ(Cell(0, 1), u"3");
}

TEST_F(Record, NoToADeleteLeavesTheGridButTheEditIsSaved) {
    OpenFive();
    Device.Main().SetCell(0, 1, u"edited");
    Device.WillAnswer(BoxAnswer::No);
    Choose(u"Delete Record");
    EXPECT_EQ(Cell(0, 1), u"edited");
    EXPECT_EQ(Download(), Header + "edited||\n2||\n3||\n4||\n5||\n");
}

TEST_F(Record, DeletingTheOnlyOneLeavesABlankOne) {
    OpenDownload(Header + "1|2|3\n");
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::Yes);
    Choose(u"Delete Record");
    EXPECT_EQ(Position(), u"1/1");
    EXPECT_THAT(Column(1), ElementsAre(u"", u"", u""));
    EXPECT_EQ(Download(), Header + "||\n");
}

TEST_F(Record, NewCarriesOverFromTheLastOneWhateverIsOnScreen) {
    InstallMeter("Place|1|1|||||\nMoisture|1||Moisture||||\nRemark|1|1|||||\n");
    OpenDownload(Header + "Hall|1|a\nRoof|2|b\n");
    Choose(u"New Record");
    EXPECT_EQ(Position(), u"3/3");
    EXPECT_THAT(Column(1), ElementsAre(u"Roof", u"", u"b"));
    EXPECT_TRUE(Table.RecordDirty);
    EXPECT_EQ(Download(), Header + "Hall|1|a\nRoof|2|b\n||\n");
    GoBack();
    EXPECT_EQ(Download(), Header + "Hall|1|a\nRoof|2|b\nRoof||b\n");
}

TEST_F(Record, InsertCarriesNothingOver) {
    InstallMeter("Place|1|1|||||\nMoisture|1||||||\nRemark|1||||||\n");
    OpenDownload(Header + "Hall|1|a\n");
    Choose(u"Insert Record");
    EXPECT_THAT(Column(1), ElementsAre(u"", u"", u""));
}

TEST_F(Record, ShortRowShowsEmptyCellsAndKeepsItsLength) {
    OpenDownload(Header + "1|2|3\nshort\n");
    Choose(u"Next Record");
    EXPECT_THAT(Column(1), ElementsAre(u"short", u"", u""));
    Tap(0, 1);
    Type(u"still");
    Choose(u"Previous Record");
    EXPECT_EQ(Download(), Header + "1|2|3\nstill\n");
}

TEST_F(Record, LongRowKeepsWhatNoFieldShows) {
    OpenDownload(Header + "1|2|3|four|five\n");
    Choose(u"Next Record");
    EXPECT_FALSE(Table.RecordDirty);
    Tap(0, 1);
    Type(u"one");
    GoBack();
    EXPECT_EQ(Download(), Header + "one|2|3|four|five\n");
}

/// ShowRecord uses only the values that the row has. The field that the row lacks is hidden by its painting.
TEST_F(Record, ShortRowLeavesTheHeightOfWhatItLacksToThePainting) {
    InstallMeter("Place|1||||||\nMoisture|0||Moisture||||\nRemark|0||||||\n");
    OpenDownload(Header + "1|2\n");
    for (const std::int32_t row : {1, 2})
        Device.Main().SetRowHeight(row, 10);
    ShowRecord();
    EXPECT_EQ(Device.Main().RowHeight(1), 0);
    EXPECT_EQ(Device.Main().RowHeight(2), 10);
}

class RecordCommandWithoutATable : public Record, public testing::WithParamInterface<const char16_t*> {};

TEST_P(RecordCommandWithoutATable, DoesNothing) {
    GotoScreen(ScrInfRecord);
    Device.Main().SetRows(1);
    Device.Main().SetCell(0, 1, u"kept");
    Device.Title().SetCell(0, 1, u"kept");
    RecordCommand(GetParam());
    EXPECT_EQ(Cell(0, 1), u"kept");
    EXPECT_EQ(Position(), u"kept");
    EXPECT_TRUE(Device.Did.Boxes.empty());
    EXPECT_TRUE(Device.Did.Unsaved.empty());
}

INSTANTIATE_TEST_SUITE_P(All, RecordCommandWithoutATable,
                         testing::Values(u"NEXT", u"PREV", u"FIRST", u"LAST", u"NEW", u"INSERT", u"DELETE"));

TEST_F(Record, CommandsWithoutATableDoNothing) {
    GotoScreen(ScrInfRecord);
    RecordCommand(u"NEXT");
    SaveRecordFromGrid();
    EXPECT_EQ(Screen(), ScrInfRecord);
}

TEST_F(Record, SavingShowsTheBusyStrip) {
    OpenFive();
    Device.Did.Status.clear();
    Tap(0, 1);
    Type(u"x");
    Choose(u"Next Record");
    EXPECT_THAT(Device.Did.Status, ElementsAre(u"Busy", u""));
}

TEST_F(Record, KeystrokesReachTheCellAtOnce) {
    OpenFive();
    Tap(1, 1);
    Type(u"4");
    EXPECT_EQ(Cell(1, 1), u"4");
    Type(u"42");
    EXPECT_EQ(Cell(1, 1), u"42");
    EXPECT_TRUE(Table.RecordDirty);
}

// A field that is open over the record.

/// Each closing of a field, as reported to the screen: row, column, text, and whether the field was still visible.
std::vector<std::string> Closed;

class FieldOverARecord : public Record {
protected:
    FieldOverARecord() {
        OpenFive();
        Repaint();
        Closed.clear();
        ScreenRow(ScrInfRecord).Behaviour.CellEdited = [](std::int32_t row, std::int32_t col, const Text& text) {
            Closed.push_back(std::to_string(row) + " " + std::to_string(col) + " " + modStringTools::ToBytes(text) +
                             (platform::Device().txtInputField.Visible() ? " open" : " hidden"));
        };
        Tap(2, 1);
        Type(u"typed");
    }
    bool IsOpen() { return Device.Platform.txtInputField.Visible(); }
};

TEST_F(FieldOverARecord, IsClosedBeforeAnotherRecordComesUnderIt) {
    Choose(u"Next Record");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Device.Platform.txtInputField.Contents(), u"");
    EXPECT_THAT(Closed, ElementsAre("2 1 typed open"));
    EXPECT_EQ(Device.Platform.focus.Holder(), &Device.Platform.grdMain);
    EXPECT_EQ(backends::SetInput(Device.Hand, u"late"), "no input control has the focus");
    Choose(u"Next Record");
    EXPECT_EQ(Download(), Header + "1||typed\n2||\n3||\n4||\n5||\n");
}

class CommandUnderAField : public FieldOverARecord, public testing::WithParamInterface<const char16_t*> {};

TEST_P(CommandUnderAField, ClosesIt) {
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::Yes);
    RecordCommand(GetParam());
    EXPECT_FALSE(IsOpen());
    EXPECT_THAT(Closed, ElementsAre("2 1 typed open"));
    EXPECT_EQ(Cell(2, 1), Text(GetParam()) == u"PREV" || Text(GetParam()) == u"FIRST" ? u"typed" : u"");
}

INSTANTIATE_TEST_SUITE_P(Each, CommandUnderAField,
                         testing::Values(u"NEXT", u"PREV", u"FIRST", u"LAST", u"NEW", u"INSERT", u"DELETE"));

TEST_F(FieldOverARecord, StaysWhenTheRecordIsNotDeletedAfterAll) {
    Device.WillAnswer(BoxAnswer::No);
    Choose(u"Delete Record");
    EXPECT_TRUE(IsOpen());
    Type(u"more");
    EXPECT_EQ(Cell(2, 1), u"more");
}

TEST_F(FieldOverARecord, IsSavedByBackAndClosedBeforeTheListIsShown) {
    Table.RecordDirty = false; // so that only the open field causes the save
    GoBack();
    EXPECT_EQ(Screen(), ScrDownloads);
    EXPECT_FALSE(IsOpen());
    EXPECT_THAT(Closed, ElementsAre("2 1 typed open"));
    EXPECT_EQ(Device.Platform.focus.Holder(), &Device.Platform.grdMain);
    EXPECT_EQ(Download(), Header + "1||typed\n2||\n3||\n4||\n5||\n");
}

TEST_F(FieldOverARecord, IsClosedByAnyOtherScreen) {
    MenuEvent(u"Preferences...");
    EXPECT_FALSE(IsOpen());
    EXPECT_THAT(Closed, ElementsAre("2 1 typed open"));
}

TEST_F(FieldOverARecord, IsClosedWithoutTheFocusToo) {
    Device.Platform.grdTitle.GotFocus = nullptr;
    Device.Platform.txtInputField.LostFocus = nullptr; // as if the event had been lost
    Device.Platform.grdTitle.SetFocus();
    ASSERT_TRUE(IsOpen());
    Choose(u"Next Record");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Cell(2, 1), u"");
}

TEST_F(FieldOverARecord, TakesNoReadingIntoTheNextRecord) {
    Choose(u"New Record");
    Tap(1, 1);
    Device.Platform.txtInputField.SetContents(u"24 %");
    EXPECT_EQ(Cell(1, 1), u"24 %");
    EXPECT_EQ(Cell(2, 1), u"");
}

/// The page key moves the current row from the field's to one for dates.
TEST_F(Record, FieldThatIsOpenIsNoAnswerToADatePrompt) {
    InstallMeter("Place|1||||||\nDay|1|||||DATE|\n");
    OpenDownload("Place|Day\na|05/03/2007\n");
    Repaint();
    Tap(0, 1);
    Type(u"typed");
    std::int32_t key = 34;
    frmQuorin::Form_KeyUp(key, 0);
    key = 310;
    frmQuorin::Form_KeyUp(key, 0);
    EXPECT_TRUE(Device.Platform.dteInputField.Visible());
    EXPECT_FALSE(Device.Platform.txtInputField.Visible());
    MenuEvent(u"Ok");
    EXPECT_EQ(Cell(1, 1), u"05/03/2007");
    EXPECT_EQ(Cell(0, 1), u"typed");
}

TEST_F(Record, SaveOfADriverClosesTheFieldOverItsName) {
    InstallMeter();
    MenuEvent(u"inf editor...");
    Repaint();
    MenuEvent(u"Edit");
    Repaint();
    Tap(0, 1);
    Type(u"Gauge");
    Choose(u"Save");
    EXPECT_EQ(Screen(), ScrInfRecord);
    EXPECT_FALSE(Device.Platform.txtInputField.Visible());
    EXPECT_EQ(File("drivers.txt"), "NAME|INFFILE\nGauge|meter.txt\n");
}

} // namespace
} // namespace modQuorin
