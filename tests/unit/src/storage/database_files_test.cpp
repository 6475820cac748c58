// SPDX-License-Identifier: MIT
// What is special about line files that are line databases.
#include "src/storage/line_files.h"

#include "src/storage/settings.h"
#include "src/storage/volumes.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/other_tool.h"
#include "tests/support/test_device.h"
#include "tests/unit/backends/files/full_disk.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace modFileSystem {
namespace {

class DatabaseFile : public testing::Test {
protected:
    DatabaseFile() { modQuorin::SetFilePaths(); }
    ~DatabaseFile() override { CloseFile(File); }

    void Open(const char16_t* mode) { OpenFile(File, u".\\Quorin\\test.pdb", mode, u"TEXT", u"QVRN"); }
    void Write(std::int32_t lines) {
        Open(u"w");
        for (std::int32_t i = 1; i <= lines; ++i)
            WriteFileLine(File, u"line " + modStringTools::NumberText(i));
    }
    std::vector<platform::LineRecord> Records() {
        auto& databases = platform::Device().recordDatabase;
        const platform::DatabaseId id = Slots.SlotState[static_cast<std::size_t>(File.slot)];
        std::vector<platform::LineRecord> records;
        for (std::int32_t line = 1; line <= databases.RecordCount(id); ++line) {
            platform::LineRecord record;
            EXPECT_EQ(databases.FindRecord(id, line), platform::NoError);
            EXPECT_EQ(databases.Position(id), line - 1);
            EXPECT_TRUE(databases.ReadRecord(id, record));
            records.push_back(record);
        }
        return records;
    }
    void ExpectInLine() {
        std::int32_t number = 0;
        for (const platform::LineRecord& record : Records())
            EXPECT_EQ(record.LineNumber, ++number);
    }

    support::TestDevice Device;
    FileHandle File;
};

TEST_F(DatabaseFile, LinesStandInOrderAfterEveryEdit) {
    Write(5);
    ExpectInLine();
    DeleteFileLine(File, 2);
    ExpectInLine();
    InsertFileLine(File, 1, InsertPosition::Before, u"first");
    ExpectInLine();
    InsertFileLine(File, 5, InsertPosition::After, u"last");
    ExpectInLine();
    EXPECT_EQ(Records().size(), 6U);
}

TEST_F(DatabaseFile, SeekTellsTheRecordsPlace) {
    Write(3);
    EXPECT_EQ(SeekFileLine(File, 2), 2);
    EXPECT_EQ(File.recordNumber, 2);
    EXPECT_EQ(SeekFileLine(File, 7), 0);
    EXPECT_EQ(File.recordNumber, 0);
}

TEST_F(DatabaseFile, BearsTheTypeAndCreatorItWasMadeWith) {
    Write(1);
    CloseFile(File);
    auto& databases = platform::Device().recordDatabase;
    EXPECT_EQ(databases.FirstDatabase(PackCode(u"TEXT"), PackCode(u"QVRN")), u"test");
    EXPECT_EQ(databases.FirstDatabase(PackCode(u"DATA"), 0), u"");
}

TEST_F(DatabaseFile, FailedWriteGivesZeroAndAddsNoLine) {
    Write(2);
    Device.Host.faults.FailNext(1, 1); // the record is added, and can't be written
    EXPECT_EQ(WriteFileLine(File, u"lost"), 0);
    EXPECT_EQ(FileLineCount(File), 2);
    EXPECT_EQ(WriteFileLine(File, u"kept"), 4);
    ExpectInLine();
}

TEST_F(DatabaseFile, FailedChangeIsToldAndLeavesTheLine) {
    Write(2);
    Device.Host.faults.FailNext(1);
    EXPECT_FALSE(ChangeFileLine(File, 1, u"x"));
    std::int32_t line = 1;
    EXPECT_EQ(ReadFileLine(File, line), u"line 1");
}

TEST_F(DatabaseFile, CommittedLinesAreThereAfterAPowerCut) {
    Write(2);
    Slots = {};
    File = {};
    Open(u"r");
    EXPECT_EQ(FileLineCount(File), 2);
}

TEST_F(DatabaseFile, OnAPalmDeviceIsDeletedUnderItsTextName) {
    backends::DeviceOptions options;
    options.DeviceType = 1;
    support::TestDevice palm(options);
    OpenFile(File, u"Device:\\drivers.txt", u"w", u"TEXT", u"QVRN");
    WriteFileLine(File, u"NAME|INFFILE");
    CloseFile(File);
    EXPECT_TRUE(palm.Folder.Has("Databases/drivers.sqlite"));
    EXPECT_TRUE(DeleteFile(u"Device:\\drivers.txt"));
    EXPECT_FALSE(palm.Folder.Has("Databases/drivers.sqlite"));
}

TEST_F(DatabaseFile, IsOpenedInNoModeWithALineToReadNext) {
    Write(2);
    CloseFile(File);
    for (const char16_t* mode : {u"r", u"a", u"w"}) {
        Open(mode);
        ASSERT_TRUE(File.valid);
        EXPECT_EQ(File.nextLine, 0);
        std::int32_t next = -1;
        EXPECT_EQ(ReadFileLine(File, next), u"");
        CloseFile(File);
    }
}

TEST_F(DatabaseFile, ThatAFailingDiskKeepsFromUsIsNotMadeAnew) {
    Write(2);
    CloseFile(File);
    Device.Host.faults.FailNextReads(1);
    Open(u"a");
    EXPECT_FALSE(File.valid);
    EXPECT_TRUE(File.kept);
    Open(u"r");
    EXPECT_EQ(FileLineCount(File), 2);
}

/// What is reported when a database can't be written to, for each operation that writes.
class WhyADatabaseFails : public DatabaseFile {
protected:
    WhyADatabaseFails() {
        for (const std::filesystem::path& place : {Device.Folder.Path(), Databases()}) {
            std::filesystem::create_directories(place);
            std::filesystem::permissions(place, std::filesystem::perms::all);
        }
    }
    std::filesystem::path Databases() const { return Device.Folder.Path() / "Databases"; }
    std::filesystem::path Test() const { return Databases() / "test.sqlite"; }
    /// Returns the end of the message with which a change stops the program, or the text of the error with which it
    /// failed.
    Text WhyNot(const std::function<bool()>& change) {
        Open(u"a");
        Text why;
        try {
            why = File.valid && change() ? Text(u"nothing") : platform::ErrorText(File.error);
        } catch (const support::ProgramOver& over) {
            why = over.Failure.substr(over.Failure.rfind(u": ") + 2);
        }
        ResetSlots();
        File = {};
        return why;
    }
    std::vector<Text> OfEachChange() {
        return {WhyNot([this] { return ChangeFileLine(File, 1, u"changed"); }),
                WhyNot([this] { return DeleteFileLine(File, 1); }),
                WhyNot([this] { return InsertFileLine(File, 1, InsertPosition::Before, u"inserted"); }),
                WhyNot([this] { return WriteFileLine(File, u"appended") != 0; })};
    }
};

TEST_F(WhyADatabaseFails, IsThatItIsWriteProtected) {
    Write(3);
    CloseFile(File);
    std::filesystem::permissions(Test(), std::filesystem::perms(0444));
    const OrdinaryUser user;
    EXPECT_THAT(OfEachChange(), testing::Each(u"permission denied"));
}

TEST_F(WhyADatabaseFails, IsThatItsFolderIsWriteProtected) {
    Write(3);
    CloseFile(File);
    std::filesystem::permissions(Test(), std::filesystem::perms(0666));
    std::filesystem::permissions(Databases(), std::filesystem::perms(0555));
    const OrdinaryUser user;
    EXPECT_THAT(OfEachChange(), testing::Each(u"permission denied"));
}

TEST_F(WhyADatabaseFails, IsThatTheDiskIsFull) {
    Write(3);
    CloseFile(File);
    const FullDisk disk(100);
    EXPECT_THAT(OfEachChange(), testing::Each(u"the disk is full"));
}

TEST_F(WhyADatabaseFails, IsThatItIsDamaged) {
    Open(u"w");
    for (int i = 0; i < 100; ++i)
        WriteFileLine(File, Text(1200, u'a'));
    CloseFile(File);
    std::fstream file(Test(), std::ios::in | std::ios::out | std::ios::binary);
    for (std::streamoff page = 4; page < 30; ++page) { // after the tables and what a search for a position reads first
        file.seekp(page * 4096);
        file << std::string(4096, 'x');
    }
    file.close();
    const Text damaged = u"it is damaged, or a file of another kind";
    EXPECT_THAT(OfEachChange(), testing::ElementsAre(damaged, damaged, damaged, testing::_));
}

/// The program is not stopped: the other program can be closed, and the change saved again.
TEST_F(WhyADatabaseFails, IsThatAnotherProgramHasLockedIt) {
    Write(3);
    support::OtherTool tool(Test());
    tool.Lock();
    Device.Host.hostDatabases.Patience.Longest = std::chrono::milliseconds(0);
    EXPECT_FALSE(ChangeFileLine(File, 1, u"changed"));
    EXPECT_EQ(File.error, platform::InUse);
    EXPECT_FALSE(DeleteFileLine(File, 1));
    EXPECT_EQ(File.error, platform::InUse);
    EXPECT_FALSE(InsertFileLine(File, 1, InsertPosition::Before, u"inserted"));
    EXPECT_EQ(File.error, platform::InUse);
}

/// A database that can't be created is reported with its own reason, and not as a full disk.
TEST_F(WhyADatabaseFails, IsToldWhereItCantBeMade) {
    std::filesystem::permissions(Databases(), std::filesystem::perms(0555));
    const OrdinaryUser user;
    Open(u"w");
    EXPECT_FALSE(File.valid);
    EXPECT_THAT(Device.Did.Unsaved, testing::ElementsAre(testing::Pair(u"test", u"permission denied")));
}

TEST_F(WhyADatabaseFails, IsToldWhereWhatIsInItsPlaceCantBeDeleted) {
    Write(1);
    CloseFile(File);
    std::filesystem::permissions(Test(), std::filesystem::perms(0666));
    std::filesystem::permissions(Databases(), std::filesystem::perms(0555));
    const OrdinaryUser user;
    Open(u"w");
    EXPECT_THAT(Device.Did.Unsaved, testing::ElementsAre(testing::Pair(u"test", u"permission denied")));
    EXPECT_EQ(RemoveFile(u".\\Quorin\\test.pdb"), platform::PermissionDenied);
}

TEST_F(WhyADatabaseFails, IsToldWhereALineIsRefused) {
    Write(2);
    Device.Host.faults.FailNext(1, 1);
    WriteFileLine(File, u"lost");
    EXPECT_THAT(Device.Did.Unsaved, testing::ElementsAre(testing::Pair(u"test", u"the disk is full")));
}

TEST_F(WhyADatabaseFails, IsThatOfItsOwnOpeningAndOfNoOther) {
    Write(1);
    CloseFile(File);
    std::ofstream(Databases() / "other.sqlite") << "no database at all, but long enough to look like one";
    FileHandle other;
    OpenFile(other, u".\\Quorin\\other.pdb", u"r", u"TEXT", u"QVRN");
    FileHandle missing;
    OpenFile(missing, u".\\Quorin\\missing.pdb", u"r", u"TEXT", u"QVRN");
    EXPECT_EQ(other.error, platform::Damaged);
    EXPECT_TRUE(other.kept);
    EXPECT_EQ(missing.error, platform::FileNotFound);
    EXPECT_FALSE(missing.kept);
}

} // namespace
} // namespace modFileSystem
