// SPDX-License-Identifier: MIT
// A keyed table behaves in the same way on a text file and on a line database: one suite, run on both.
#include "src/storage/keyed_tables.h"

#include "src/storage/settings.h"
#include "tests/support/heard_readings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace modFileSystem {
namespace {

using testing::_;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

class KeyedTable : public testing::TestWithParam<const char16_t*> {
protected:
    KeyedTable() { modQuorin::SetFilePaths(); }

    Text Name() const { return GetParam(); }
    void Open(const char16_t* mode = u"r") { OpenTable(Name(), mode, u"TEXT", u"QVRN"); }
    void Write(const std::vector<Text>& lines) {
        FileHandle file;
        OpenFile(file, Name(), u"w", u"TEXT", u"QVRN");
        for (const Text& line : lines)
            WriteFileLine(file, line);
        CloseFile(file);
    }
    void OpenWith(const std::vector<Text>& lines) {
        Write(lines);
        Open();
    }
    std::vector<Text> Lines() {
        FileHandle file;
        std::vector<Text> lines;
        OpenFile(file, Name(), u"r", u"TEXT", u"QVRN");
        const std::int32_t count = FileLineCount(file);
        for (std::int32_t line = 1; line <= count; ++line)
            lines.push_back(ReadFileLine(file, line));
        CloseFile(file);
        return lines;
    }

    support::TestDevice Device;
};

TEST_P(KeyedTable, OpensOnItsFirstRowWithoutLoadingIt) {
    OpenWith({u"NAME|FILE", u"a|1"});
    EXPECT_TRUE(Table.TableFile.valid);
    EXPECT_THAT(Table.TableColumns, ElementsAre(u"NAME", u"FILE"));
    EXPECT_THAT(Table.TableValues, IsEmpty());
    EXPECT_EQ(Table.TableRowIndex, 1);
    EXPECT_EQ(TableRowCount(), 1);
    FirstRow();
    EXPECT_THAT(Table.TableValues, ElementsAre(u"a", u"1"));
}

/// The callers create a missing table. One that exists and can't be opened must not look missing.
TEST_P(KeyedTable, KeptFromUsByAFailingDiskStopsTheProgram) {
    Write({u"NAME", u"a"});
    for (const std::int32_t good : {0, 1}) { // the first opening fails, or the one for appending
        Device.Host.faults.FailNextReads(1, good);
        EXPECT_THAT(modStringTools::ToBytes(support::FailureOf([this] { Open(); })), HasSubstr("Can't open"));
        EXPECT_THAT(Lines(), ElementsAre(u"NAME", u"a"));
    }
}

TEST_P(KeyedTable, MissingOneOpensForAppendingAlone) {
    Open(u"r");
    EXPECT_FALSE(Table.TableFile.valid);
    EXPECT_EQ(TableRowCount(), 0);
    Open(u"a");
    EXPECT_TRUE(Table.TableFile.valid);
}

TEST_P(KeyedTable, OpenedForWritingKeepsItsContent) {
    Write({u"NAME", u"a"});
    Text mode = u"w";
    OpenTable(Name(), mode, u"TEXT", u"QVRN");
    EXPECT_EQ(mode, u"a");
    EXPECT_EQ(TableRowCount(), 1);
}

TEST_P(KeyedTable, OpenedForReadingCanBeWrittenTo) {
    OpenWith({u"NAME", u"a"});
    FirstRow();
    SetField(u"NAME", u"b");
    SaveRow();
    EXPECT_THAT(Lines(), ElementsAre(u"NAME", u"b"));
}

TEST_P(KeyedTable, CreatedAnewLosesWhatWasThere) {
    Write({u"OLD", u"a"});
    CreateTable(Name(), u"NAME|FILE", u"r", u"TEXT", u"QVRN");
    EXPECT_THAT(Table.TableColumns, ElementsAre(u"NAME", u"FILE"));
    EXPECT_EQ(TableRowCount(), 0);
}

TEST_P(KeyedTable, OpeningAnotherOneClosesIt) {
    OpenWith({u"NAME", u"a"});
    const std::int16_t slot = Table.TableFile.slot;
    Open();
    EXPECT_EQ(Table.TableFile.slot, slot);
    CloseTable();
    EXPECT_EQ(Table.TableRowIndex, 0);
    EXPECT_EQ(Table.TableRowTotal, -1);
    EXPECT_THAT(Table.TableColumns, IsEmpty());
}

TEST_P(KeyedTable, LineSplitsAtEveryBar) {
    OpenWith({u"A|B|C|D", u"|x||"});
    FirstRow();
    EXPECT_THAT(Table.TableValues, ElementsAre(u"", u"x", u"", u""));
}

TEST_P(KeyedTable, EmptyLineIsOneEmptyField) {
    OpenWith({u"A", u""});
    FirstRow();
    EXPECT_THAT(Table.TableValues, ElementsAre(u""));
}

TEST_P(KeyedTable, WalksItsRowsAndStaysAtBothEnds) {
    OpenWith({u"NAME", u"a", u"b", u"c"});
    FirstRow();
    PreviousRow();
    EXPECT_EQ(GetField(u"NAME"), u"a");
    NextRow();
    NextRow();
    EXPECT_EQ(GetField(u"NAME"), u"c");
    NextRow();
    EXPECT_EQ(GetField(u"NAME"), u"c");
    EXPECT_EQ(Table.TableRowIndex, 3);
    PreviousRow();
    EXPECT_EQ(GetField(u"NAME"), u"b");
    LastRow();
    EXPECT_EQ(Table.TableRowIndex, 3);
}

TEST_P(KeyedTable, FailedMoveLeavesTheRowNumberAndBlankValues) {
    OpenWith({u"NAME|FILE", u"a|1"});
    FirstRow();
    GotoRow(5);
    EXPECT_EQ(Table.TableRowIndex, 1);
    EXPECT_THAT(Table.TableValues, ElementsAre(u"", u""));
}

TEST_P(KeyedTable, ColumnsMatchInAnyCase) {
    OpenWith({u"Name|FILE", u"a|1"});
    FirstRow();
    EXPECT_EQ(GetField(u"nAME"), u"a");
    EXPECT_EQ(GetField(u"OTHER"), u"");
}

TEST_P(KeyedTable, FieldThatTheRowIsTooShortForStopsTheProgram) {
    OpenWith({u"NAME|FILE", u"a"});
    FirstRow();
    EXPECT_EQ(GetField(u"NAME"), u"a");
    const Text failure = support::FailureOf([] { GetField(u"FILE"); });
    EXPECT_THAT(modStringTools::ToBytes(failure), HasSubstr("FILE"));
    support::FailureOf([] { SetField(u"FILE", u"x"); });
}

TEST_P(KeyedTable, WithoutALoadedRowFieldsAreEmpty) {
    OpenWith({u"NAME|FILE"});
    EXPECT_EQ(GetField(u"FILE"), u"");
    SetField(u"FILE", u"x");
    EXPECT_EQ(GetField(u"FILE"), u"");
    EXPECT_TRUE(Table.RecordDirty);
}

TEST_P(KeyedTable, RowWithMoreFieldsKeepsThem) {
    OpenWith({u"NAME", u"a|extra|more"});
    FirstRow();
    SetField(u"NAME", u"b");
    SaveRow();
    EXPECT_THAT(Lines(), ElementsAre(u"NAME", u"b|extra|more"));
}

TEST_P(KeyedTable, SettingAnUnknownColumnOnlyMarksTheRecord) {
    OpenWith({u"NAME", u"a"});
    FirstRow();
    SetField(u"OTHER", u"x");
    EXPECT_TRUE(Table.RecordDirty);
    SaveRow();
    EXPECT_FALSE(Table.RecordDirty);
    EXPECT_THAT(Lines(), ElementsAre(u"NAME", u"a"));
}

TEST_P(KeyedTable, BarInAValueBecomesTwoFieldsOnceSaved) {
    OpenWith({u"NAME|FILE", u"a|1"});
    FirstRow();
    SetField(u"NAME", u"x|y");
    EXPECT_EQ(GetField(u"NAME"), u"x|y");
    SaveRow();
    EXPECT_THAT(Table.TableValues, ElementsAre(u"x", u"y", u"1"));
}

TEST_P(KeyedTable, UnsavedChangesAreDroppedOnClosing) {
    OpenWith({u"NAME", u"a"});
    FirstRow();
    SetField(u"NAME", u"b");
    CloseTable();
    EXPECT_THAT(Lines(), ElementsAre(u"NAME", u"a"));
}

TEST_P(KeyedTable, SavedRowStaysCurrent) {
    OpenWith({u"NAME", u"a", u"b", u"c"});
    GotoRow(2);
    SetField(u"NAME", u"B");
    SaveRow();
    EXPECT_EQ(Table.TableRowIndex, 2);
    EXPECT_EQ(GetField(u"NAME"), u"B");
    NextRow();
    EXPECT_EQ(GetField(u"NAME"), u"c");
}

/// A save rewrites a text file and opens it again, in the first slot that is free then.
TEST_P(KeyedTable, SavedRowStaysCurrentInAnotherSlot) {
    Write({u"NAME", u"a", u"b", u"c"});
    FileHandle other;
    OpenFile(other, u".\\Quorin\\other.txt", u"w", u"TEXT", u"QVRN");
    Open();
    ASSERT_EQ(Table.TableFile.slot, 2);
    CloseFile(other);
    GotoRow(2);
    SetField(u"NAME", u"B");
    SaveRow();
    EXPECT_EQ(Table.TableFile.slot, Table.TableFile.isDatabase ? 2 : 1);
    EXPECT_TRUE(Table.TableFile.valid);
    EXPECT_EQ(Table.TableRowIndex, 2);
    EXPECT_EQ(GetField(u"NAME"), u"B");
    NextRow();
    EXPECT_EQ(GetField(u"NAME"), u"c");
}

TEST_P(KeyedTable, FindsARowByItsValueWithRegardToCase) {
    OpenWith({u"NAME|FILE", u"ALPHA|1", u"alpha|2"});
    EXPECT_TRUE(FindRow(NameSelection(u"alpha")));
    EXPECT_EQ(GetField(u"FILE"), u"2");
    EXPECT_TRUE(FindRow(u"file=1"));
    EXPECT_EQ(GetField(u"NAME"), u"ALPHA");
    EXPECT_FALSE(FindRow(u"NAME=Alpha"));
    EXPECT_EQ(GetField(u"FILE"), u"2"); // the last row is then the current one
}

TEST_P(KeyedTable, SelectionWithoutEqualSignMovesNothing) {
    OpenWith({u"NAME", u"a", u"b"});
    GotoRow(2);
    EXPECT_FALSE(FindRow(u"NAME"));
    EXPECT_EQ(GetField(u"NAME"), u"b");
}

TEST_P(KeyedTable, SelectionWithoutClosingQuoteLosesItsLastCharacter) {
    OpenWith({u"NAME", u"ab", u"abc"});
    EXPECT_TRUE(FindRow(u"NAME=\"abc"));
    EXPECT_EQ(GetField(u"NAME"), u"ab");
}

TEST_P(KeyedTable, WithoutRowsFindsNothingAndLoadsNothing) {
    OpenWith({u"NAME"});
    EXPECT_FALSE(FindRow(NameSelection(u"NAME")));
    EXPECT_THAT(Table.TableValues, IsEmpty());
}

TEST_P(KeyedTable, LastRowOfATableWithoutRowsIsTheHeader) {
    OpenWith({u"NAME|FILE"});
    LastRow();
    EXPECT_EQ(Table.TableRowIndex, 0);
    EXPECT_THAT(Table.TableValues, ElementsAre(u"NAME", u"FILE"));
}

TEST_P(KeyedTable, DeletingTheOnlyRowLeadsToTheHeader) {
    OpenWith({u"NAME|FILE", u"a|1"});
    FirstRow();
    DeleteRow();
    EXPECT_EQ(TableRowCount(), 0);
    EXPECT_EQ(Table.TableRowIndex, 0);
    EXPECT_THAT(Table.TableValues, ElementsAre(u"NAME", u"FILE"));
    EXPECT_THAT(Lines(), ElementsAre(u"NAME|FILE"));
}

TEST_P(KeyedTable, DeletedRowIsFollowedByTheNextOrAtTheEndByTheLast) {
    OpenWith({u"NAME", u"a", u"b", u"c"});
    GotoRow(2);
    DeleteRow();
    EXPECT_EQ(GetField(u"NAME"), u"c");
    EXPECT_EQ(Table.TableRowIndex, 2);
    DeleteRow();
    EXPECT_EQ(GetField(u"NAME"), u"a");
    EXPECT_EQ(Table.TableRowIndex, 1);
}

TEST_P(KeyedTable, AddsABlankRowAtTheEnd) {
    OpenWith({u"A|B|C"});
    AddRow(-1);
    EXPECT_EQ(Table.TableRowIndex, 1);
    EXPECT_EQ(TableRowCount(), 1);
    EXPECT_THAT(Lines(), ElementsAre(u"A|B|C", u"||"));
}

TEST_P(KeyedTable, AddsABlankRowBeforeTheFirst) {
    OpenWith({u"A|B", u"a|b"});
    AddRow(1);
    EXPECT_EQ(Table.TableRowIndex, 1);
    EXPECT_THAT(Lines(), ElementsAre(u"A|B", u"|", u"a|b"));
}

/// If a row could not be added, fields that are set next must not change the row that was current before.
TEST_P(KeyedTable, RowThatCantBeAddedOrDeletedLeavesTheTableAsItWas) {
    OpenWith({u"A|B", u"a|b", u"c|d"});
    GotoRow(2);
    const std::int32_t good = Table.TableFile.isDatabase ? 1 : 0; // the record is added, but not written
    for (const std::int32_t where : {-1, 1, 2}) {
        Device.Host.faults.FailNext(1, good);
        EXPECT_FALSE(AddRow(where));
        Device.Host.faults.FailNext(0);
        EXPECT_EQ(TableRowCount(), 2);
        EXPECT_EQ(Table.TableRowIndex, 2);
        EXPECT_THAT(Table.TableValues, ElementsAre(u"c", u"d"));
    }
    Device.Host.faults.FailNext(1);
    DeleteRow();
    Device.Host.faults.FailNext(0);
    EXPECT_EQ(TableRowCount(), 2);
    EXPECT_THAT(Table.TableValues, ElementsAre(u"c", u"d"));
    EXPECT_TRUE(AddRow(-1));
    EXPECT_THAT(Lines(), ElementsAre(u"A|B", u"a|b", u"c|d", u"|"));
}

/// The form shows no message. The report has the name of the table, not that of its scratch file.
TEST_P(KeyedTable, TellsEachChangeThatDidNotReachTheFileOnce) {
    OpenWith({u"A|B", u"a|b", u"c|d"});
    const Text name = Table.TableFile.name;
    const std::int32_t good = Table.TableFile.isDatabase ? 1 : 0; // the record is added, but not written
    GotoRow(2);
    SetField(u"A", u"new");
    Device.Host.faults.FailNext(1);
    SaveRow();
    EXPECT_THAT(Device.Did.Unsaved, ElementsAre(Pair(name, u"the disk is full")));
    Device.Host.faults.FailNext(1, good);
    EXPECT_FALSE(AddRow(-1));
    EXPECT_THAT(Device.Did.Unsaved, SizeIs(2));
    Device.Host.faults.FailNext(1);
    DeleteRow();
    EXPECT_THAT(Device.Did.Unsaved, SizeIs(3));
    EXPECT_THAT(Device.Did.Unsaved, Each(Pair(name, _)));
    EXPECT_THAT(Lines(), ElementsAre(u"A|B", u"a|b", u"c|d"));
}

TEST_P(KeyedTable, ReportsEachChangeOfARow) {
    OpenWith({u"A|B", u"a|b", u"c|d"});
    const support::HeardReadings heard(Device);
    const std::string name = modStringTools::ToBytes(Table.TableName);
    GotoRow(2);
    SetField(u"A", u"new");
    SaveRow();
    AddRow(1);
    AddRow(-1);
    GotoRow(2);
    DeleteRow();
    EXPECT_THAT(heard.RowLines(), ElementsAre("saved " + name + " 2: c|d -> new|d", "added " + name + " 1:  -> |",
                                              "added " + name + " 4:  -> |", "deleted " + name + " 2: a|b -> "));
}

TEST_P(KeyedTable, ReportsAChangeThatFailed) {
    OpenWith({u"A|B", u"a|b", u"c|d"});
    const support::HeardReadings heard(Device);
    const std::string name = modStringTools::ToBytes(Table.TableName);
    const std::int32_t good = Table.TableFile.isDatabase ? 1 : 0; // the record is added, but not written
    GotoRow(2);
    SetField(u"A", u"new");
    Device.Host.faults.FailNext(1);
    SaveRow();
    Device.Host.faults.FailNext(1, good);
    AddRow(-1);
    Device.Host.faults.FailNext(1);
    DeleteRow();
    EXPECT_THAT(heard.RowLines(), ElementsAre("saved " + name + " 2: c|d -> new|d failed: the disk is full",
                                              "added " + name + " 2: c|d -> | failed: the disk is full",
                                              "deleted " + name + " 2: c|d ->  failed: the disk is full"));
}

TEST_P(KeyedTable, TellsOfARowThatIsNotInTheFile) {
    OpenWith({u"A|B", u"a|b"});
    Table.TableRowIndex = 5;
    SaveRow();
    EXPECT_THAT(Device.Did.Unsaved, ElementsAre(Pair(Table.TableFile.name, u"the row is not in the file")));
}

TEST_P(KeyedTable, LoadedRowIsNotDirty) {
    OpenWith({u"NAME", u"a", u"b"});
    Table.RecordDirty = true;
    FirstRow();
    EXPECT_FALSE(Table.RecordDirty);
}

TEST_P(KeyedTable, WithoutEvenAHeaderHasLessThanNoRows) {
    OpenWith({});
    EXPECT_TRUE(Table.TableFile.valid);
    EXPECT_EQ(TableRowCount(), -1);
    EXPECT_THAT(Table.TableColumns, IsEmpty());
    AddRow(-1);
    EXPECT_THAT(Lines(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(On, KeyedTable, testing::Values(u".\\Quorin\\test.txt", u".\\Quorin\\test.pdb"),
                         [](const auto& each) { return each.index == 0 ? "TextFile" : "LineDatabase"; });

} // namespace
} // namespace modFileSystem
