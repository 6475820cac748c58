// SPDX-License-Identifier: MIT
// What is special about line files that are line databases.
#include "storage/line_files.h"

#include "storage/settings.h"
#include "storage/volumes.h"
#include "tests/support/test_device.h"

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
        for (databases.MoveFirst(id); !databases.AtEnd(id); databases.MoveNext(id)) {
            platform::LineRecord record;
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
    InsertFileLine(File, 1, 1, u"first");
    ExpectInLine();
    InsertFileLine(File, 5, 2, u"last");
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
    Device.Platform.faults.FailNext(1, 1); // the record is added, and can't be written
    EXPECT_EQ(WriteFileLine(File, u"lost"), 0);
    EXPECT_EQ(FileLineCount(File), 2);
    EXPECT_EQ(WriteFileLine(File, u"kept"), 4);
    ExpectInLine();
}

TEST_F(DatabaseFile, FailedChangeIsToldAndLeavesTheLine) {
    Write(2);
    Device.Platform.faults.FailNext(1);
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
    platform::device::DeviceOptions options;
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
    Device.Platform.faults.FailNextReads(1);
    Open(u"a");
    EXPECT_FALSE(File.valid);
    EXPECT_TRUE(File.kept);
    Open(u"r");
    EXPECT_EQ(FileLineCount(File), 2);
}

} // namespace
} // namespace modFileSystem
