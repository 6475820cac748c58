// SPDX-License-Identifier: MIT
// The line databases as other tools read them, and after crashes.
#include "backends/files/line_database.h"

#include "tests/support/ordinary_user.h"
#include "tests/support/other_tool.h"
#include "tests/support/temporary_root.h"
#include "tests/unit/backends/files/full_disk.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace platform;
using backends::LineDatabase;
using backends::PathMap;
using testing::ElementsAre;

namespace {

class LineDatabaseFile : public testing::Test {
protected:
    DatabaseId Made(const Text& name) {
        const DatabaseId id = Databases.Create(name, 1, 2).Id;
        EXPECT_EQ(Databases.DeclareTable(id, u"TEXT", u"LineNumber long, LineData String"), NoError);
        return id;
    }

    bool Append(DatabaseId id, const Text& line) {
        return Databases.AddRecord(id) == NoError &&
               Databases.WriteRecord(id, {Databases.RecordCount(id) + 1, line}) == NoError &&
               Databases.Commit(id) == NoError;
    }

    /// Returns every row of a statement that another program runs, its columns joined by `|`.
    std::vector<std::string> Outside(const std::string& name, const char* query) const {
        return support::OtherTool(Root.Path(name)).Do(query);
    }

    std::int32_t CountAnew(const Text& name) {
        const DatabaseId id = Databases.Open(name, DatabaseMode::Read).Id;
        EXPECT_NE(id, 0);
        const std::int32_t count = Databases.RecordCount(id);
        Databases.Close(id);
        return count;
    }

    TemporaryRoot Root;
    LineDatabase Databases{PathMap(Root.Path())};
};

TEST_F(LineDatabaseFile, IsReadByAnotherToolWhileItIsOpen) {
    const DatabaseId id = Made(u"drivers");
    ASSERT_TRUE(Append(id, u"NAME|INFFILE"));
    ASSERT_TRUE(Append(id, u"Größe|"));
    EXPECT_THAT(Outside("Databases/drivers.sqlite", R"(SELECT * FROM "TEXT" ORDER BY LineNumber)"),
                ElementsAre("0|1|NAME|INFFILE", "1|2|Gr\xC3\xB6\xC3\x9F"
                                                "e|"));
    EXPECT_THAT(Outside("Databases/drivers.sqlite", R"(SELECT TypeCode, CreatorCode FROM "DATABASE")"),
                ElementsAre("1|2"));
    EXPECT_THAT(Outside("Databases/drivers.sqlite", R"(SELECT DISTINCT typeof(LineData) FROM "TEXT")"),
                ElementsAre("text"));
    EXPECT_THAT(Outside("Databases/drivers.sqlite", "PRAGMA integrity_check"), ElementsAre("ok"));
}

TEST_F(LineDatabaseFile, HoldsNoNulAndGivesNoneThatAnotherToolHasWritten) {
    const DatabaseId id = Made(u"drivers");
    ASSERT_TRUE(Append(id, Text(u"a\0b", 3)));
    EXPECT_THAT(Outside("Databases/drivers.sqlite", R"(SELECT hex(LineData) FROM "TEXT")"), ElementsAre("612062"));
    Outside("Databases/drivers.sqlite", R"(UPDATE "TEXT" SET LineData = CAST(x'630064' AS TEXT))");
    LineRecord record;
    ASSERT_TRUE(Databases.FindRecord(id, 1) == NoError && Databases.ReadRecord(id, record));
    EXPECT_EQ(record.LineData, u"c d");
}

TEST_F(LineDatabaseFile, StandsAloneOnceItIsAtRest) {
    const DatabaseId id = Made(u"drivers");
    ASSERT_TRUE(Append(id, u"one"));
    EXPECT_EQ(Root.Entries("Databases"), 1);
}

TEST_F(LineDatabaseFile, TakesAFileOfAnotherKindForNoDatabase) {
    Root.Put("Databases/text.sqlite", "this is a text, long enough to be looked at as the head of a database file");
    Root.Put("Databases/empty.sqlite", "");
    std::filesystem::create_directory(Root.Path("Databases/folder.sqlite"));
    for (const char16_t* name : {u"text", u"empty", u"folder"}) {
        EXPECT_EQ(Databases.Open(name, DatabaseMode::Read).Id, 0);
        EXPECT_EQ(Databases.Open(name, DatabaseMode::ReadWrite).Id, 0);
    }
    EXPECT_EQ(Databases.Create(u"text", 1, 2).Id, 0);
    EXPECT_EQ(Databases.Create(u"folder", 1, 2).Id, 0);
    EXPECT_EQ(Databases.FirstDatabase(0, 0), u"");
    EXPECT_EQ(Root.Bytes("Databases/text.sqlite").substr(0, 14), "this is a text");
}

TEST_F(LineDatabaseFile, ThatCantBeReadIsMissingInAListAndNamed) {
    Databases.Close(Made(u"b"));
    for (const char16_t* name : {u"a", u"c"})
        Databases.Close(Made(name));
    support::OtherTool tool(Root.Path("Databases/a.sqlite"));
    tool.Lock();
    Root.Put("Databases/text.sqlite", "this is a text, long enough to be looked at as the head of a database file");
    Root.Put("Databases/empty.sqlite", "");
    Databases.Patience.Longest = {};
    EXPECT_EQ(Databases.FirstDatabase(1, 2), u"b");
    EXPECT_EQ(Databases.NextDatabase(), u"c");
    EXPECT_EQ(Databases.NextDatabase(), u"");
    EXPECT_THAT(Databases.UnreadDatabases(), ElementsAre(Unlisted{u"a", InUse}, Unlisted{u"text", Damaged}));
    tool.LetGo();
    std::filesystem::remove(Root.Path("Databases/text.sqlite"));
    EXPECT_EQ(Databases.FirstDatabase(1, 2), u"a");
    EXPECT_THAT(Databases.UnreadDatabases(), testing::IsEmpty());
}

TEST_F(LineDatabaseFile, InAFolderThatCantBeReadIsMissingInAListAsAreAll) {
    Databases.Close(Made(u"drivers"));
    ::chmod(Root.Path().c_str(), 0711);
    ::chmod(Root.Path("Databases").c_str(), 0111);
    {
        const OrdinaryUser somebody;
        EXPECT_EQ(Databases.FirstDatabase(0, 0), u"");
        EXPECT_THAT(Databases.UnreadDatabases(), ElementsAre(Unlisted{u"", PermissionDenied}));
    }
    ::chmod(Root.Path().c_str(), 0600); // the folder can't be opened
    {
        const OrdinaryUser somebody;
        EXPECT_EQ(Databases.FirstDatabase(0, 0), u"");
        EXPECT_THAT(Databases.UnreadDatabases(), ElementsAre(Unlisted{u"", PermissionDenied}));
    }
    ::chmod(Root.Path().c_str(), 0700);
    ::chmod(Root.Path("Databases").c_str(), 0700);
}

TEST_F(LineDatabaseFile, OfAnotherProgramIsNoLineDatabase) {
    std::filesystem::create_directory(Root.Path("Databases"));
    Outside("Databases/other.sqlite", "CREATE TABLE Songs(Name TEXT)");
    EXPECT_EQ(Databases.Open(u"other", DatabaseMode::ReadWrite).Id, 0);
    EXPECT_EQ(Databases.Create(u"other", 1, 2).Id, 0);
    EXPECT_THAT(Outside("Databases/other.sqlite", "SELECT name FROM sqlite_master"), ElementsAre("Songs"));
}

TEST_F(LineDatabaseFile, ThatWouldKeepItsReaderBusyForEverIsNotOpened) {
    for (const char* trap : {
             R"(INSERT INTO "TEXT" VALUES(2147483646, 2, 'far behind'))",
             R"(DROP TABLE "TEXT"; CREATE VIEW "TEXT" AS WITH RECURSIVE Numbers(Position) AS
                (SELECT 0 UNION ALL SELECT Position + 1 FROM Numbers)
                SELECT Position, Position + 1 AS LineNumber, 'x' AS LineData FROM Numbers)",
             R"(CREATE TRIGGER Forever BEFORE UPDATE ON "TEXT" BEGIN INSERT INTO "TEXT" WITH RECURSIVE Numbers(Position)
                AS (SELECT 10 UNION ALL SELECT Position + 1 FROM Numbers) SELECT Position, 1, 'x' FROM Numbers; END)",
             R"(ALTER TABLE "TEXT" ADD COLUMN Long TEXT AS (printf('%*d', 900000000, 1)))",
         }) {
        const DatabaseId id = Made(u"trap");
        Append(id, u"one");
        Databases.Close(id);
        Outside("Databases/trap.sqlite", trap);
        EXPECT_EQ(Databases.Open(u"trap", DatabaseMode::ReadWrite).Id, 0) << trap;
        EXPECT_EQ(Databases.FirstDatabase(0, 0), u"") << trap;
        ASSERT_EQ(Databases.Delete(u"trap"), NoError);
    }
}

TEST_F(LineDatabaseFile, IsMadeInAFileThatACrashLeftEmpty) {
    Root.Put("Databases/drivers.sqlite", "");
    EXPECT_NE(Databases.Create(u"drivers", 1, 2).Id, 0);
}

TEST_F(LineDatabaseFile, IsMadeForItsOwnerAlone) {
    const mode_t old = umask(0);
    const DatabaseId id = Made(u"drivers");
    ASSERT_EQ(Databases.BeginBatch(id), NoError);
    ASSERT_TRUE(Append(id, u"x"));
    for (const char* name : {"Databases/drivers.sqlite", "Databases/drivers.sqlite-journal"}) {
        struct stat found {};
        ASSERT_EQ(stat(Root.Path(name).c_str(), &found), 0) << name;
        EXPECT_EQ(found.st_mode & 07777U, 0600U) << name;
    }
    umask(old);
}

TEST_F(LineDatabaseFile, DeletesALinkAndNotWhatItLeadsTo) {
    Databases.Close(Made(u"real"));
    Root.Link("real.sqlite", "Databases/link.sqlite");
    EXPECT_EQ(Databases.Delete(u"link"), NoError);
    EXPECT_TRUE(Root.Has("Databases/real.sqlite"));
    EXPECT_EQ(Databases.Open(u"link", DatabaseMode::Read).Id, 0);
}

TEST_F(LineDatabaseFile, IsNotReachedOverALinkThatLeadsOutside) {
    const TemporaryRoot elsewhere;
    LineDatabase others{PathMap(elsewhere.Path())};
    others.Close(others.Create(u"secret", 1, 2).Id);
    std::filesystem::create_directory(Root.Path("Databases"));
    Root.Link(elsewhere.Path("Databases/secret.sqlite"), "Databases/secret.sqlite");
    EXPECT_EQ(Databases.Open(u"secret", DatabaseMode::Read).Id, 0);
    EXPECT_NE(Databases.Delete(u"secret"), NoError);
    EXPECT_EQ(Databases.FirstDatabase(0, 0), u"");
}

TEST_F(LineDatabaseFile, IgnoresOtherFilesBesideTheDatabases) {
    Databases.Close(Made(u"drivers"));
    Root.Put("Databases/notes.txt", "x");
    Root.Put("Databases/.sqlite", "x");
    EXPECT_EQ(Databases.FirstDatabase(0, 0), u"drivers");
    EXPECT_EQ(Databases.NextDatabase(), u"");
}

TEST_F(LineDatabaseFile, KeepsNegativeCodes) {
    Databases.Close(Databases.Create(u"x", -5, -7).Id);
    EXPECT_EQ(Databases.FirstDatabase(-5, -7), u"x");
    EXPECT_EQ(Databases.FirstDatabase(5, 7), u"");
}

/// Runs the work in another process, which is then killed without a chance to clean up.
template <typename Work>
void KilledAfter(Work work) {
    const pid_t child = fork();
    if (child == 0) {
        work();
        kill(getpid(), SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
}

TEST_F(LineDatabaseFile, KeepsCommittedLinesWhenTheProgramIsKilled) {
    KilledAfter([this] {
        const DatabaseId id = Made(u"drivers");
        Append(id, u"one");
        Append(id, u"two");
        Databases.AddRecord(id);
        Databases.WriteRecord(id, {3, u"not committed"});
    });
    EXPECT_EQ(CountAnew(u"drivers"), 2);
}

TEST_F(LineDatabaseFile, LosesAWholeBatchWhenTheProgramIsKilledInIt) {
    KilledAfter([this] {
        const DatabaseId id = Made(u"drivers");
        Append(id, u"one");
        Databases.BeginBatch(id);
        for (int line = 0; line < 20000; ++line) // enough for SQLite to write before the batch ends
            Append(id, Text(200, u'x'));
    });
    EXPECT_EQ(CountAnew(u"drivers"), 1);
    EXPECT_THAT(Outside("Databases/drivers.sqlite", "PRAGMA integrity_check"), ElementsAre("ok"));
}

TEST_F(LineDatabaseFile, ShiftsNothingWhereARecordIsMissing) {
    const DatabaseId id = Made(u"drivers");
    for (const char16_t* line : {u"one", u"two", u"three", u"four"})
        Append(id, line);
    Outside("Databases/drivers.sqlite", R"(DELETE FROM "TEXT" WHERE Position = 1)");
    EXPECT_EQ(Databases.ShiftRecords(id, 0), FileNotFound);
    EXPECT_THAT(Outside("Databases/drivers.sqlite", R"(SELECT LineData FROM "TEXT" ORDER BY Position)"),
                ElementsAre("one", "three", "four"));
}

TEST_F(LineDatabaseFile, NumbersLinesThatAnotherToolHasLeftWithoutANumber) {
    const DatabaseId id = Made(u"drivers");
    for (const char16_t* line : {u"one", u"two", u"three"})
        Append(id, line);
    Outside("Databases/drivers.sqlite", R"(UPDATE "TEXT" SET LineNumber = NULL WHERE Position = 1)");
    EXPECT_EQ(Databases.RenumberRecords(id), NoError);
    constexpr const char* numbers = R"(SELECT LineNumber FROM "TEXT" ORDER BY Position)";
    EXPECT_THAT(Outside("Databases/drivers.sqlite", numbers), ElementsAre("1", "2", "3"));
    Outside("Databases/drivers.sqlite", R"(UPDATE "TEXT" SET LineNumber = NULL WHERE Position = 1)");
    EXPECT_EQ(Databases.ShiftRecords(id, 0), NoError);
    EXPECT_THAT(Outside("Databases/drivers.sqlite", numbers), ElementsAre("1", "2", "1"));
}

TEST_F(LineDatabaseFile, KeepsWhatItHasWhenTheDiskIsFull) {
    const DatabaseId id = Made(u"drivers");
    ASSERT_TRUE(Append(id, u"one"));
    {
        const FullDisk full(16384);
        EXPECT_FALSE(Append(id, Text(30000, u'x')));
        EXPECT_EQ(Databases.RecordCount(id), 1);
    }
    EXPECT_TRUE(Append(id, u"two"));
    EXPECT_EQ(CountAnew(u"drivers"), 2);
}

TEST_F(LineDatabaseFile, TakesNoMoreOfABatchThatTheFullDiskHasBroken) {
    const DatabaseId id = Made(u"drivers");
    ASSERT_EQ(Databases.BeginBatch(id), NoError);
    for (int line = 0; line < 1000; ++line)
        ASSERT_TRUE(Append(id, Text(200, line % 2 == 0 ? u'x' : u'y')));
    ASSERT_EQ(Databases.EndBatch(id), NoError);
    ASSERT_EQ(Databases.BeginBatch(id), NoError);
    {
        const FullDisk full(16384); // SQLite writes down the old contents of each page before it changes it
        EXPECT_NE(Databases.ShiftRecords(id, 0), NoError);
    }
    EXPECT_FALSE(Append(id, u"alone"));
    EXPECT_NE(Databases.EndBatch(id), NoError);
    EXPECT_EQ(CountAnew(u"drivers"), 1000);
    EXPECT_TRUE(Append(id, u"two"));
}

TEST_F(LineDatabaseFile, LosesABatchThatAReaderDoesNotLetEnd) {
    const DatabaseId id = Made(u"drivers");
    ASSERT_TRUE(Append(id, u"one"));
    support::OtherTool reader(Root.Path("Databases/drivers.sqlite"));
    reader.Read();
    ASSERT_EQ(Databases.BeginBatch(id), NoError);
    ASSERT_TRUE(Append(id, u"two"));
    EXPECT_EQ(Databases.EndBatch(id), InUse);
    EXPECT_EQ(Databases.RecordCount(id), 1);
    reader.Close();
    EXPECT_TRUE(Append(id, u"three"));
    EXPECT_EQ(CountAnew(u"drivers"), 2);
}

/// A record that another tool's lock made unreadable is not reported as missing, also after the lock is released.
TEST_F(LineDatabaseFile, ThatAnotherToolKeptFromUsOnceCountsNoMore) {
    const DatabaseId id = Made(u"drivers");
    ASSERT_TRUE(Append(id, u"one"));
    support::OtherTool tool(Root.Path("Databases/drivers.sqlite"));
    tool.Lock();
    LineRecord record;
    EXPECT_FALSE(Databases.ReadRecord(id, record));
    tool.Close();
    EXPECT_EQ(Databases.RecordCount(id), -NumberOf(ReadKept));
    EXPECT_EQ(Databases.FindRecord(id, 2), ReadKept);
    EXPECT_EQ(Databases.AddRecord(id), ReadKept);
}

TEST_F(LineDatabaseFile, IsNotMadeByHalves) {
    {
        const FullDisk full(4096);
        EXPECT_EQ(Databases.Create(u"drivers", 1, 2).Id, 0);
    }
    EXPECT_EQ(Root.Entries("Databases"), 0);
    EXPECT_NE(Databases.Create(u"drivers", 1, 2).Id, 0);
}

TEST_F(LineDatabaseFile, FindsALineOfTenThousandAsFastAsOneOfAHundred) {
    const auto made = [this](const Text& name, int lines) {
        const DatabaseId id = Made(name);
        EXPECT_EQ(Databases.BeginBatch(id), NoError);
        for (int line = 0; line < lines; ++line)
            EXPECT_TRUE(Append(id, u"Site|12.5|mg/l|2007-03-05"));
        EXPECT_EQ(Databases.EndBatch(id), NoError);
        return id;
    };
    const auto secondsFor = [this](DatabaseId id, std::int32_t lines) {
        const auto start = std::chrono::steady_clock::now();
        LineRecord record;
        for (std::int32_t find = 0; find < 3000; ++find)
            EXPECT_TRUE(Databases.FindRecord(id, 1 + find * 7919 % lines) == NoError &&
                        Databases.ReadRecord(id, record));
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    const DatabaseId few = made(u"few", 100);
    const DatabaseId many = made(u"many", 10000);
    double ofFew = 1000;
    double ofMany = 1000;
    // The shortest time of each, because other processes can make any of them longer.
    for (int round = 0; round < 5; ++round) {
        ofFew = std::min(ofFew, secondsFor(few, 100));
        ofMany = std::min(ofMany, secondsFor(many, 10000));
    }
    EXPECT_LT(ofMany / ofFew, 10) << "a find that walks the whole table takes a hundred times as long";
}

class RefusesTheDatabaseName : public testing::TestWithParam<Text> {};

TEST_P(RefusesTheDatabaseName, AsIfThereWereNone) {
    const TemporaryRoot root;
    backends::LineDatabase databases{backends::PathMap(root.Path("inner"))};
    EXPECT_EQ(databases.Create(GetParam(), 1, 2).Id, 0);
    EXPECT_EQ(databases.Open(GetParam(), DatabaseMode::ReadWrite).Id, 0);
    EXPECT_NE(databases.Delete(GetParam()), NoError);
    EXPECT_EQ(root.Entries(), 1);
}

INSTANTIATE_TEST_SUITE_P(Rows, RefusesTheDatabaseName,
                         testing::Values(u"", u".", u"..", u".hidden", u"a..b", u"../x", u"..\\x", u"a/b", u"a\\b",
                                         u"/etc/x", u"c:x", Text(u"a\0b", 3), Text(250, u'x')));

} // namespace
