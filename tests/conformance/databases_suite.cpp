// SPDX-License-Identifier: MIT
// What every store of line databases must do.
#include "tests/conformance/storage_suites.h"

namespace conformance {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_P(DatabaseSuite, OpensNoDatabaseThatIsNotThere) {
    EXPECT_EQ(Databases().Open(u"none", DatabaseMode::Read).Error, FileNotFound);
    EXPECT_EQ(Databases().Open(u"none", DatabaseMode::ReadWrite).Error, FileNotFound);
    EXPECT_THAT(Names(0, 0), IsEmpty());
}

TEST_P(DatabaseSuite, GivesPositiveIdentifiers) {
    EXPECT_GT(Made(u"a"), 0);
    EXPECT_GT(Made(u"b"), 0);
}

TEST_P(DatabaseSuite, MakesNoDatabaseTwice) {
    const DatabaseId id = Made(u"drivers", {u"kept"});
    EXPECT_EQ(Databases().Create(u"drivers", TextType, Creator).Error, FileExists);
    EXPECT_THAT(Lines(id), ElementsAre(u"kept"));
}

TEST_P(DatabaseSuite, IsEmptyBeforeItsTableIsDeclared) {
    const DatabaseId id = Databases().Create(u"new", TextType, Creator).Id;
    ASSERT_NE(id, 0);
    EXPECT_EQ(Databases().RecordCount(id), 0);
    EXPECT_EQ(Databases().Position(id), -1);
    EXPECT_NE(Databases().FindRecord(id, 1), NoError);
    EXPECT_NE(Databases().AddRecord(id), NoError);
    EXPECT_EQ(CurrentLine(id), u"no record");
}

TEST_P(DatabaseSuite, DeclaresOnlyTheTableOfLines) {
    const DatabaseId id = Databases().Create(u"new", TextType, Creator).Id;
    EXPECT_NE(Databases().DeclareTable(id, u"OTHER", Definition), NoError);
    EXPECT_NE(Databases().DeclareTable(id, u"TEXT", u"LineData String"), NoError);
}

TEST_P(DatabaseSuite, DeclaresItsTableAgainWithoutLosingALine) {
    const DatabaseId id = Made(u"drivers", {u"one"});
    EXPECT_EQ(Databases().DeclareTable(id, u"TEXT", Definition), NoError);
    EXPECT_THAT(Lines(id), ElementsAre(u"one"));
}

TEST_P(DatabaseSuite, AppendsRecordsInOrder) {
    const DatabaseId id = Made(u"drivers", {u"one", u"two", u"three"});
    EXPECT_EQ(Databases().RecordCount(id), 3);
    EXPECT_THAT(Lines(id), ElementsAre(u"one", u"two", u"three"));
}

TEST_P(DatabaseSuite, CountsNoRecordBeforeItIsCommitted) {
    const DatabaseId id = Made(u"drivers", {u"one"});
    ASSERT_EQ(Databases().AddRecord(id), NoError);
    EXPECT_EQ(Databases().RecordCount(id), 1);
    ASSERT_EQ(Databases().WriteRecord(id, {2, u"two"}), NoError);
    EXPECT_EQ(Databases().RecordCount(id), 1);
    EXPECT_EQ(Databases().Position(id), 1);
    EXPECT_EQ(CurrentLine(id), u"two");
    ASSERT_EQ(Databases().Commit(id), NoError);
    EXPECT_EQ(Databases().RecordCount(id), 2);
    EXPECT_EQ(Databases().Position(id), 1);
}

TEST_P(DatabaseSuite, DropsAnAddedRecordByTheNextOne) {
    const DatabaseId id = Made(u"drivers", {u"one"});
    ASSERT_EQ(Databases().AddRecord(id), NoError);
    ASSERT_EQ(Databases().WriteRecord(id, {2, u"dropped"}), NoError);
    Append(id, u"two");
    EXPECT_THAT(Lines(id), ElementsAre(u"one", u"two"));
}

TEST_P(DatabaseSuite, DropsAnAddedRecordByAMove) {
    const DatabaseId id = Made(u"drivers", {u"one"});
    ASSERT_EQ(Databases().AddRecord(id), NoError);
    ASSERT_EQ(Databases().FindRecord(id, 1), NoError);
    EXPECT_EQ(CurrentLine(id), u"one");
    EXPECT_NE(Databases().Commit(id), NoError);
    EXPECT_EQ(Databases().RecordCount(id), 1);
}

TEST_P(DatabaseSuite, DropsAnAddedRecordByClosing) {
    const DatabaseId id = Made(u"drivers", {u"one"});
    ASSERT_EQ(Databases().AddRecord(id), NoError);
    ASSERT_EQ(Databases().WriteRecord(id, {2, u"dropped"}), NoError);
    Databases().Close(id);
    EXPECT_THAT(Lines(Databases().Open(u"drivers", DatabaseMode::Read).Id), ElementsAre(u"one"));
}

TEST_P(DatabaseSuite, CommitsABlankRecordThatWasNeverWritten) {
    const DatabaseId id = Made(u"drivers");
    ASSERT_EQ(Databases().AddRecord(id), NoError);
    ASSERT_EQ(Databases().Commit(id), NoError);
    LineRecord record{7, u"old"};
    ASSERT_TRUE(Databases().ReadRecord(id, record));
    EXPECT_EQ(record.LineNumber, 0);
    EXPECT_EQ(record.LineData, u"");
}

TEST_P(DatabaseSuite, EditsTheCurrentRecord) {
    const DatabaseId id = Made(u"drivers", {u"one", u"two", u"three"});
    ASSERT_EQ(Databases().FindRecord(id, 2), NoError);
    ASSERT_EQ(Databases().BeginEdit(id), NoError);
    ASSERT_EQ(Databases().WriteRecord(id, {2, u"TWO"}), NoError);
    ASSERT_EQ(Databases().Commit(id), NoError);
    EXPECT_EQ(Databases().Position(id), 1);
    EXPECT_THAT(Lines(id), ElementsAre(u"one", u"TWO", u"three"));
}

TEST_P(DatabaseSuite, WritesNothingThatWasNotBegun) {
    const DatabaseId id = Made(u"drivers", {u"one"});
    ASSERT_EQ(Databases().FindRecord(id, 1), NoError);
    EXPECT_NE(Databases().WriteRecord(id, {1, u"changed"}), NoError);
    EXPECT_NE(Databases().Commit(id), NoError);
    EXPECT_THAT(Lines(id), ElementsAre(u"one"));
}

TEST_P(DatabaseSuite, DropsAnEditThatIsNotCommitted) {
    const DatabaseId id = Made(u"drivers", {u"one", u"two"});
    ASSERT_EQ(Databases().FindRecord(id, 1), NoError);
    ASSERT_EQ(Databases().BeginEdit(id), NoError);
    ASSERT_EQ(Databases().WriteRecord(id, {1, u"changed"}), NoError);
    ASSERT_EQ(Databases().FindRecord(id, 2), NoError);
    EXPECT_THAT(Lines(id), ElementsAre(u"one", u"two"));
}

TEST_P(DatabaseSuite, EditsNothingPastTheEnd) {
    const DatabaseId id = Made(u"drivers", {u"one"});
    ASSERT_EQ(Databases().RenumberRecords(id), NoError); // afterwards the position is the end
    EXPECT_EQ(Databases().BeginEdit(id), FileNotFound);
    EXPECT_NE(Databases().DeleteRecord(id), NoError);
}

TEST_P(DatabaseSuite, FindsARecordByItsLineNumber) {
    const DatabaseId id = Made(u"drivers", {u"one", u"two", u"three"});
    ASSERT_EQ(Databases().FindRecord(id, 3), NoError);
    EXPECT_EQ(Databases().Position(id), 2);
    EXPECT_EQ(CurrentLine(id), u"three");
    EXPECT_EQ(Databases().FindRecord(id, 4), FileNotFound);
    EXPECT_EQ(Databases().FindRecord(id, 0), FileNotFound);
    EXPECT_EQ(Databases().FindRecord(id, -1), FileNotFound);
}

TEST_P(DatabaseSuite, FindsTheFirstOfTwoEqualLineNumbers) {
    const DatabaseId id = Made(u"drivers");
    for (const char16_t* line : {u"first", u"second"}) {
        ASSERT_EQ(Databases().AddRecord(id), NoError);
        ASSERT_EQ(Databases().WriteRecord(id, {5, line}), NoError);
        ASSERT_EQ(Databases().Commit(id), NoError);
    }
    ASSERT_EQ(Databases().FindRecord(id, 5), NoError);
    EXPECT_EQ(CurrentLine(id), u"first");
}

TEST_P(DatabaseSuite, StandsOnTheNextRecordAfterADelete) {
    const DatabaseId id = Made(u"drivers", {u"one", u"two", u"three"});
    ASSERT_EQ(Databases().FindRecord(id, 2), NoError);
    ASSERT_EQ(Databases().DeleteRecord(id), NoError);
    EXPECT_EQ(CurrentLine(id), u"three");
    EXPECT_EQ(Databases().Position(id), 1);
    EXPECT_EQ(Databases().RecordCount(id), 2);
    ASSERT_EQ(Databases().DeleteRecord(id), NoError);
    EXPECT_EQ(Databases().Position(id), -1);
    EXPECT_NE(Databases().DeleteRecord(id), NoError);
}

TEST_P(DatabaseSuite, KeepsPositionsDenseOverADeleteNearTheFront) {
    const DatabaseId id = Made(u"drivers");
    ASSERT_EQ(Databases().BeginBatch(id), NoError);
    for (int line = 0; line < 2000; ++line)
        Append(id, u"x");
    ASSERT_EQ(Databases().EndBatch(id), NoError);
    ASSERT_EQ(Databases().FindRecord(id, 2), NoError);
    ASSERT_EQ(Databases().DeleteRecord(id), NoError);
    EXPECT_EQ(Databases().RecordCount(id), 1999);
    ASSERT_EQ(Databases().FindRecord(id, 2000), NoError);
    EXPECT_EQ(Databases().Position(id), 1998);
}

TEST_P(DatabaseSuite, DeletesNoRecordThatWasOnlyAdded) {
    const DatabaseId id = Made(u"drivers", {u"one"});
    ASSERT_EQ(Databases().AddRecord(id), NoError);
    EXPECT_EQ(Databases().DeleteRecord(id), NoError);
    EXPECT_THAT(Lines(id), ElementsAre(u"one"));
}

TEST_P(DatabaseSuite, RefusesWritesWhenOpenedForReading) {
    Databases().Close(Made(u"drivers", {u"one"}));
    const DatabaseId id = Databases().Open(u"drivers", DatabaseMode::Read).Id;
    ASSERT_NE(id, 0);
    EXPECT_EQ(Databases().AddRecord(id), PermissionDenied);
    EXPECT_EQ(Databases().BeginEdit(id), PermissionDenied);
    EXPECT_EQ(Databases().BeginBatch(id), PermissionDenied);
    EXPECT_EQ(Databases().DeclareTable(id, u"TEXT", Definition), PermissionDenied);
    EXPECT_NE(Databases().WriteRecord(id, {1, u"changed"}), NoError);
    EXPECT_EQ(Databases().DeleteRecord(id), PermissionDenied);
    EXPECT_THAT(Lines(id), ElementsAre(u"one"));
}

TEST_P(DatabaseSuite, StandsOnItsFirstRecordWhenOpened) {
    Databases().Close(Made(u"drivers", {u"one", u"two"}));
    EXPECT_EQ(CurrentLine(Databases().Open(u"drivers", DatabaseMode::ReadWrite).Id), u"one");
}

TEST_P(DatabaseSuite, MayBeOpenTwice) {
    const DatabaseId first = Made(u"drivers", {u"one"});
    const DatabaseId second = Databases().Open(u"drivers", DatabaseMode::ReadWrite).Id;
    ASSERT_NE(second, 0);
    EXPECT_NE(first, second);
    Append(second, u"two");
    EXPECT_THAT(Lines(first), ElementsAre(u"one", u"two"));
    Databases().Close(second);
    Append(first, u"three");
    EXPECT_THAT(Lines(first), ElementsAre(u"one", u"two", u"three"));
}

TEST_P(DatabaseSuite, TakesAClosedIdentifierForNone) {
    const DatabaseId id = Made(u"drivers", {u"one"});
    Databases().Close(id);
    Databases().Close(id);
    EXPECT_EQ(Databases().RecordCount(id), 0);
    EXPECT_EQ(Databases().Position(id), -1);
    EXPECT_NE(Databases().AddRecord(id), NoError);
    EXPECT_NE(Databases().EndBatch(id), NoError);
    EXPECT_EQ(CurrentLine(id), u"no record");
}

TEST_P(DatabaseSuite, DeletesADatabase) {
    Databases().Close(Made(u"drivers"));
    EXPECT_EQ(Databases().Delete(u"drivers"), NoError);
    EXPECT_EQ(Databases().Open(u"drivers", DatabaseMode::Read).Id, 0);
    EXPECT_EQ(Databases().Delete(u"drivers"), FileNotFound);
    Databases().Close(Made(u"drivers"));
    EXPECT_EQ(Databases().RecordCount(Databases().Open(u"drivers", DatabaseMode::Read).Id), 0);
}

TEST_P(DatabaseSuite, DeletesNoDatabaseThatIsOpen) {
    const DatabaseId id = Made(u"drivers", {u"one"});
    EXPECT_EQ(Databases().Delete(u"drivers"), InUse);
    EXPECT_THAT(Lines(id), ElementsAre(u"one"));
}

TEST_P(DatabaseSuite, KeepsABatchThatWasEnded) {
    const DatabaseId id = Made(u"drivers", {u"one"});
    ASSERT_EQ(Databases().BeginBatch(id), NoError);
    Append(id, u"two");
    Append(id, u"three");
    EXPECT_EQ(Databases().RecordCount(id), 3);
    ASSERT_EQ(Databases().EndBatch(id), NoError);
    Databases().Close(id);
    EXPECT_THAT(Lines(Databases().Open(u"drivers", DatabaseMode::Read).Id), ElementsAre(u"one", u"two", u"three"));
}

TEST_P(DatabaseSuite, LosesABatchThatIsClosedInTheMiddle) {
    const DatabaseId id = Made(u"drivers", {u"one"});
    ASSERT_EQ(Databases().BeginBatch(id), NoError);
    Append(id, u"two");
    Databases().Close(id);
    EXPECT_THAT(Lines(Databases().Open(u"drivers", DatabaseMode::Read).Id), ElementsAre(u"one"));
}

TEST_P(DatabaseSuite, DeletesInsideABatch) {
    const DatabaseId id = Made(u"drivers", {u"one", u"two", u"three"});
    ASSERT_EQ(Databases().BeginBatch(id), NoError);
    ASSERT_EQ(Databases().FindRecord(id, 1), NoError);
    ASSERT_EQ(Databases().DeleteRecord(id), NoError);
    ASSERT_EQ(Databases().DeleteRecord(id), NoError);
    ASSERT_EQ(Databases().EndBatch(id), NoError);
    EXPECT_EQ(Databases().RecordCount(id), 1);
    ASSERT_EQ(Databases().FindRecord(id, 3), NoError);
    EXPECT_EQ(Databases().Position(id), 0);
    EXPECT_EQ(CurrentLine(id), u"three");
}

TEST_P(DatabaseSuite, NestsNoBatches) {
    const DatabaseId id = Made(u"drivers");
    EXPECT_NE(Databases().EndBatch(id), NoError);
    ASSERT_EQ(Databases().BeginBatch(id), NoError);
    EXPECT_NE(Databases().BeginBatch(id), NoError);
    EXPECT_EQ(Databases().EndBatch(id), NoError);
}

TEST_P(DatabaseSuite, ShiftsRecordsIntoThoseBehindThem) {
    const DatabaseId id = Made(u"drivers", {u"a", u"b", u"c", u"gap"});
    EXPECT_EQ(Databases().ShiftRecords(id, 1), NoError);
    EXPECT_EQ(Databases().Position(id), 1);
    EXPECT_THAT(Lines(id), ElementsAre(u"a", u"b", u"b", u"c"));
    ASSERT_EQ(Databases().FindRecord(id, 4), NoError);
    LineRecord last;
    ASSERT_TRUE(Databases().ReadRecord(id, last));
    EXPECT_EQ(last.LineData, u"c");
    EXPECT_EQ(Databases().ShiftRecords(id, 3), NoError) << "the last one alone";
    EXPECT_THAT(Lines(id), ElementsAre(u"a", u"b", u"b", u"c"));
}

TEST_P(DatabaseSuite, ShiftsNothingFromAPlaceWhereThereIsNone) {
    const DatabaseId id = Made(u"drivers", {u"a", u"b"});
    EXPECT_EQ(Databases().ShiftRecords(id, -1), FileNotFound);
    EXPECT_EQ(Databases().ShiftRecords(id, 2), FileNotFound);
    EXPECT_THAT(Lines(id), ElementsAre(u"a", u"b"));
    Databases().Close(id);
    const DatabaseId reader = Databases().Open(u"drivers", DatabaseMode::Read).Id;
    EXPECT_EQ(Databases().ShiftRecords(reader, 0), PermissionDenied);
    EXPECT_EQ(Databases().RenumberRecords(reader), PermissionDenied);
}

TEST_P(DatabaseSuite, NumbersRecordsByTheirPlaces) {
    const DatabaseId id = Made(u"drivers", {u"a", u"b", u"c"});
    ASSERT_EQ(Databases().FindRecord(id, 1), NoError);
    ASSERT_EQ(Databases().DeleteRecord(id), NoError);
    EXPECT_EQ(Databases().FindRecord(id, 1), FileNotFound);
    EXPECT_EQ(Databases().RenumberRecords(id), NoError);
    EXPECT_EQ(Databases().Position(id), -1);
    ASSERT_EQ(Databases().FindRecord(id, 2), NoError);
    EXPECT_EQ(CurrentLine(id), u"c");
}

TEST_P(DatabaseSuite, EnumeratesByTypeAndCreatorInTheOrderOfTheNames) {
    for (const char16_t* name : {u"b", u"a b", u"a", u"B"})
        Databases().Close(Databases().Create(name, TextType, Creator).Id);
    Databases().Close(Databases().Create(u"c", OtherType, Creator).Id);
    Databases().Close(Databases().Create(u"d", TextType, OtherType).Id);
    EXPECT_THAT(Names(TextType, Creator), ElementsAre(u"B", u"a", u"a b", u"b"));
    EXPECT_THAT(Names(OtherType, 0), ElementsAre(u"c"));
    EXPECT_THAT(Names(0, OtherType), ElementsAre(u"d"));
    EXPECT_THAT(Names(0, 0), ElementsAre(u"B", u"a", u"a b", u"b", u"c", u"d"));
    EXPECT_THAT(Names(OtherType, OtherType), IsEmpty());
}

TEST_P(DatabaseSuite, EnumeratesADatabaseThatIsInABatch) {
    const DatabaseId id = Made(u"drivers");
    ASSERT_EQ(Databases().BeginBatch(id), NoError);
    Append(id, u"one");
    EXPECT_THAT(Names(TextType, 0), ElementsAre(u"drivers"));
    EXPECT_EQ(Databases().EndBatch(id), NoError);
}

TEST_P(DatabaseSuite, GivesAwkwardLinesBackAsTheyWere) {
    const std::vector<Text> lines = {u"",
                                     u" ",
                                     u"a\r",
                                     u"größe",
                                     u"\xD83D\xDE00",
                                     u"\xDC80\xDCFF",
                                     u"'); DROP TABLE \"TEXT\"; --",
                                     Text(70000, u'x')};
    EXPECT_EQ(Lines(Made(u"drivers", lines)), lines);
}

/// As in a text file. The sqlite3 program ends a line at a NUL.
TEST_P(DatabaseSuite, KeepsALineFeedAndANulAsABlank) {
    const std::vector<Text> lines = {u"a\nb\n", Text(u"a\0b\0", 4)};
    EXPECT_THAT(Lines(Made(u"drivers", lines)), ElementsAre(u"a b ", u"a b "));
}

} // namespace conformance
