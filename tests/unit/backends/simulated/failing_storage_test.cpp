// SPDX-License-Identifier: MIT
// What differs while the disk is full. The suites test that nothing differs while the switch is off.
#include "backends/simulated/failing_storage.h"

#include "backends/files/host_file_system.h"
#include "backends/files/line_database.h"
#include "backends/files/settings_file.h"
#include "tests/support/temporary_root.h"

#include <gtest/gtest.h>

using namespace backends;
using namespace platform;

namespace {

const Text Definition = u"LineNumber long, LineData String";

class FullDiskSwitch : public testing::Test {
protected:
    std::unique_ptr<TextStream> Open(const Text& name, StreamMode mode) {
        std::unique_ptr<TextStream> stream;
        EXPECT_EQ(Files.OpenStream(name, mode, stream), NoError);
        return stream;
    }

    DatabaseId Made(const Text& name) {
        const DatabaseId id = Databases.Create(name, 1, 2).Id;
        EXPECT_EQ(Databases.DeclareTable(id, u"TEXT", Definition), NoError);
        return id;
    }

    void Append(DatabaseId id, const Text& line) {
        ASSERT_EQ(Databases.AddRecord(id), NoError);
        ASSERT_EQ(Databases.WriteRecord(id, {Databases.RecordCount(id) + 1, line}), NoError);
        ASSERT_EQ(Databases.Commit(id), NoError);
    }

    TemporaryRoot Root;
    DiskFaults Faults;
    HostFileSystem RealFiles{PathMap(Root.Path())};
    FailingFileSystem Files{RealFiles, Faults};
    LineDatabase RealDatabases{PathMap(Root.Path())};
    FailingDatabase Databases{RealDatabases, Faults};
    SettingsFile RealSettings{Root.Path("settings.ini")};
    FailingSettings Settings{RealSettings, Faults};
};

TEST_F(FullDiskSwitch, TellsOfEachOperationBeforeIt) {
    const auto stream = Open(u".\\x.txt", StreamMode::Create);
    int told = 0;
    Faults.Working = [&told] { ++told; };
    ASSERT_EQ(stream->WriteLine(u"a line"), NoError);
    EXPECT_EQ(told, 1);
    Faults.FailNext(1);
    EXPECT_EQ(stream->WriteLine(u"a line"), DiskFull);
    EXPECT_EQ(told, 2);
}

TEST_F(FullDiskSwitch, FailsTheNextWritesAndNoMore) {
    const auto stream = Open(u".\\x.txt", StreamMode::Scratch);
    Faults.FailNext(2);
    EXPECT_EQ(stream->WriteLine(u"one"), DiskFull);
    EXPECT_EQ(stream->WriteLine(u"two"), DiskFull);
    EXPECT_EQ(stream->WriteLine(u"three"), NoError);
    EXPECT_EQ(stream->Close(), DiskFull) << "lines are missing";
    EXPECT_EQ(Root.Bytes("x.txt"), "three\n");
}

TEST_F(FullDiskSwitch, FailsAllWritesUntilItIsTurnedOff) {
    const auto stream = Open(u".\\x.txt", StreamMode::Create);
    Faults.FailNext(-1);
    for (int line = 0; line < 1000; ++line)
        ASSERT_EQ(stream->WriteLine(u"x"), DiskFull);
    Faults.FailNext(0);
    EXPECT_EQ(stream->WriteLine(u"x"), NoError);
}

TEST_F(FullDiskSwitch, IsSharedByAllThatWrites) {
    const auto stream = Open(u".\\x.txt", StreamMode::Create);
    const DatabaseId id = Made(u"drivers");
    Faults.FailNext(3);
    EXPECT_EQ(stream->WriteLine(u"x"), DiskFull);
    EXPECT_EQ(Databases.AddRecord(id), DiskFull);
    EXPECT_EQ(Settings.Save(u"Quorin", u"Settings", u"Key", u"value"), DiskFull);
    EXPECT_EQ(Settings.Save(u"Quorin", u"Settings", u"Key", u"value"), NoError);
}

TEST_F(FullDiskSwitch, FailsTheClosingOfAStreamThatWrote) {
    const auto stream = Open(u".\\x.txt", StreamMode::Create);
    ASSERT_EQ(stream->WriteLine(u"one"), NoError);
    Faults.FailNext(1);
    EXPECT_EQ(stream->Close(), DiskFull);
    EXPECT_EQ(stream->Close(), DiskFull) << "it has failed for good";
    EXPECT_FALSE(Root.Has("x.txt"));
}

TEST_F(FullDiskSwitch, CountsNoClosingOfAStreamThatOnlyRead) {
    Root.Put("x.txt", "one\n");
    Faults.FailNext(1);
    const auto stream = Open(u".\\x.txt", StreamMode::Existing);
    Text line;
    EXPECT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(stream->Close(), NoError);
    EXPECT_EQ(Settings.Save(u"Quorin", u"Settings", u"Key", u"value"), DiskFull) << "the one failure is still to come";
}

TEST_F(FullDiskSwitch, LeavesTheOldContentOfAFileThatWasToBeMadeAnew) {
    Root.Put("x.txt", "old\n");
    std::unique_ptr<TextStream> stream;
    Faults.FailNext(1);
    EXPECT_EQ(Files.OpenStream(u".\\x.txt", StreamMode::Create, stream), DiskFull);
    EXPECT_EQ(stream, nullptr);
    EXPECT_EQ(Root.Bytes("x.txt"), "old\n");
}

TEST_F(FullDiskSwitch, LeavesBothFilesOfAMoveUntouched) {
    Root.Put("new.txt", "new");
    Root.Put("old.txt", "old");
    Faults.FailNext(1);
    EXPECT_EQ(Files.MoveFile(u".\\new.txt", u".\\old.txt"), DiskFull);
    EXPECT_EQ(Root.Bytes("old.txt"), "old");
    EXPECT_EQ(Root.Bytes("new.txt"), "new");
}

TEST_F(FullDiskSwitch, StrikesALineInTheMiddleOfABlock) {
    Root.Put("from.txt", "one\ntwo\nthree\n");
    const auto from = Open(u".\\from.txt", StreamMode::Existing);
    const auto to = Open(u".\\to.txt", StreamMode::Scratch);
    std::string_view lines;
    std::int64_t taken = 0;
    Faults.FailNext(1, 1);
    ASSERT_EQ(from->ReadLines(3, lines, taken), NoError);
    EXPECT_EQ(taken, 1);
    EXPECT_EQ(to->WriteLines(lines), NoError);
    ASSERT_EQ(from->ReadLines(2, lines, taken), NoError);
    EXPECT_EQ(to->WriteLines(lines), DiskFull);
    EXPECT_EQ(Root.Bytes("to.txt"), "one\n");
    Faults.FailNextReads(1);
    EXPECT_EQ(from->ReadLines(1, lines, taken), DeviceFailed);
    EXPECT_EQ(taken, 0);
}

TEST_F(FullDiskSwitch, FailsTheMakingOfAFolderButNotItsOpening) {
    std::unique_ptr<Folder> folder;
    Faults.FailNext(1);
    EXPECT_EQ(Files.OpenFolder(u".\\", true, folder), NoError);
    EXPECT_EQ(Files.OpenFolder(u".\\new\\", true, folder), DiskFull);
    EXPECT_FALSE(Root.Has("new"));
    EXPECT_EQ(Files.OpenFolder(u".\\new\\", true, folder), NoError);
}

TEST_F(FullDiskSwitch, NeverFailsReadingAndDeleting) {
    Root.Put("x.txt", "one\n");
    Databases.Close(Made(u"drivers"));
    Faults.FailNext(-1);
    Text line;
    EXPECT_EQ(Open(u".\\x.txt", StreamMode::Existing)->ReadLine(line), NoError);
    EXPECT_EQ(line, u"one");
    EXPECT_EQ(Files.DeleteFile(u".\\x.txt"), NoError);
    EXPECT_NE(Databases.Open(u"drivers", DatabaseMode::Read).Id, 0);
    EXPECT_EQ(Databases.FirstDatabase(1, 2), u"drivers");
    EXPECT_EQ(Settings.Get(u"Quorin", u"Settings", u"Key", u"default"), u"default");
}

TEST_F(FullDiskSwitch, FailsEachWriteToADatabase) {
    const DatabaseId id = Made(u"drivers");
    Append(id, u"one");
    Faults.FailNext(-1);
    EXPECT_EQ(Databases.Create(u"other", 1, 2).Id, 0);
    EXPECT_EQ(Databases.DeclareTable(id, u"TEXT", Definition), DiskFull);
    EXPECT_EQ(Databases.AddRecord(id), DiskFull);
    EXPECT_NE(Databases.DeleteRecord(id), NoError);
    EXPECT_EQ(Databases.RecordCount(id), 1);
}

TEST_F(FullDiskSwitch, LeavesARecordUncommittedWhenItsWriteOrCommitFails) {
    const DatabaseId id = Made(u"drivers");
    ASSERT_EQ(Databases.AddRecord(id), NoError);
    Faults.FailNext(2);
    EXPECT_NE(Databases.WriteRecord(id, {1, u"one"}), NoError);
    EXPECT_EQ(Databases.Commit(id), DiskFull);
    EXPECT_EQ(Databases.RecordCount(id), 0);
    ASSERT_EQ(Databases.WriteRecord(id, {1, u"one"}), NoError);
    EXPECT_EQ(Databases.Commit(id), NoError);
    EXPECT_EQ(Databases.RecordCount(id), 1);
}

TEST_F(FullDiskSwitch, LosesABatchWhoseEndFailsAsAWhole) {
    const DatabaseId id = Made(u"drivers");
    const DatabaseId other = Made(u"other");
    Append(id, u"one");
    ASSERT_EQ(Databases.BeginBatch(id), NoError);
    Append(id, u"two");
    Append(id, u"three");
    Faults.FailNext(1);
    EXPECT_EQ(Databases.EndBatch(id), DiskFull);
    EXPECT_EQ(Databases.RecordCount(id), 1);
    EXPECT_EQ(Databases.Position(id), 0);
    EXPECT_NE(Databases.EndBatch(id), NoError) << "the batch is over";
    Append(id, u"four");
    EXPECT_EQ(Databases.RecordCount(id), 2);
    EXPECT_EQ(Databases.RecordCount(other), 0);
}

TEST_F(FullDiskSwitch, KeepsTheOldSetting) {
    ASSERT_EQ(Settings.Save(u"Quorin", u"Settings", u"Key", u"old"), NoError);
    Faults.FailNext(1);
    EXPECT_EQ(Settings.Save(u"Quorin", u"Settings", u"Key", u"new"), DiskFull);
    EXPECT_EQ(Settings.Get(u"Quorin", u"Settings", u"Key", u""), u"old");
}

} // namespace
