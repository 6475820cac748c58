// SPDX-License-Identifier: MIT
// What is particular to files of the host: links, permissions, pipes, a disk that is really full.
#include "backends/files/host_file_system.h"

#include "backends/files/host_files.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/temporary_root.h"
#include "tests/unit/backends/files/full_disk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace platform;
using backends::FileEntry;
using backends::HostFileSystem;
using backends::PathMap;
using testing::ElementsAre;

namespace {

class HostFiles : public testing::Test {
protected:
    std::vector<Text> Listing(const Text& path) {
        std::unique_ptr<Folder> folder;
        EXPECT_EQ(Files.OpenFolder(path, false, folder), NoError);
        std::vector<Text> names;
        for (Text name = folder ? folder->FirstFile(0) : Text(); !name.empty(); name = folder->NextFile())
            names.push_back(name);
        WalkError = folder ? folder->WalkError() : NoError;
        return names;
    }

    ErrorNumber ErrorOfOpening(const Text& name, StreamMode mode) {
        std::unique_ptr<TextStream> stream;
        return Files.OpenStream(name, mode, stream);
    }

    mode_t Permissions(const std::string& name) const {
        struct stat found {};
        EXPECT_EQ(stat(Root.Path(name).c_str(), &found), 0);
        return found.st_mode & 07777U;
    }

    /// The first step of a move to another file system.
    ErrorNumber Copy(const char* source, const char* destination) {
        FileEntry from;
        FileEntry to;
        EXPECT_EQ(EntryAt(Root.Path(source), from), NoError);
        EXPECT_EQ(EntryAt(Root.Path(destination), to), NoError);
        return CopyOver(from, std::move(to));
    }

    TemporaryRoot Root;
    TemporaryRoot Elsewhere;
    HostFileSystem Files{PathMap(Root.Path())};
    ErrorNumber WalkError = NoError; ///< of the last listing
};

TEST_F(HostFiles, ListsALinkToAFileInsideAndNoneThatLeadsOutside) {
    Root.Put("real/x.txt", "");
    Elsewhere.Put("secret.txt", "");
    std::filesystem::create_directory(Root.Path("list"));
    Root.Link("../real/x.txt", "list/inside.txt");
    Root.Link(Elsewhere.Path("secret.txt"), "list/outside.txt");
    Root.Link("nothing", "list/dangling.txt");
    Root.Link("../real", "list/folder");
    Root.Link(Root.Path("real/x.txt"), "list/absolute.txt");
    EXPECT_THAT(Listing(u".\\list\\"), ElementsAre(u".\\list\\inside.txt"));
    EXPECT_EQ(WalkError, NoError) << "what is not there is not missing";
}

TEST_F(HostFiles, SaysOfAFolderThatCantBeReadThatItsListIsNotWhole) {
    Root.Put("list/x.txt", "");
    chmod(Root.Path().c_str(), 0711);
    chmod(Root.Path("list").c_str(), 0111);
    {
        const OrdinaryUser user;
        EXPECT_THAT(Listing(u".\\list\\"), ElementsAre());
        EXPECT_EQ(WalkError, PermissionDenied);
    }
    chmod(Root.Path("list").c_str(), 0755);
    const OrdinaryUser user;
    EXPECT_THAT(Listing(u".\\list\\"), ElementsAre(u".\\list\\x.txt"));
    EXPECT_EQ(WalkError, NoError);
}

TEST_F(HostFiles, SaysOfAFileThatCantBeLookedAtThatTheListIsNotWhole) {
    Root.Put("kept/y.txt", "");
    Root.Put("list/x.txt", "");
    Root.Put("list/z.txt", "");
    Root.Link("../kept/y.txt", "list/y.txt");
    chmod(Root.Path().c_str(), 0711);
    chmod(Root.Path("list").c_str(), 0755);
    chmod(Root.Path("kept").c_str(), 0600);
    {
        const OrdinaryUser user;
        EXPECT_THAT(Listing(u".\\list\\"), ElementsAre(u".\\list\\x.txt", u".\\list\\z.txt"));
        EXPECT_EQ(WalkError, PermissionDenied);
    }
    chmod(Root.Path("kept").c_str(), 0700);
}

TEST_F(HostFiles, ListsNoNameThatADevicePathCannotMean) {
    Root.Put("a\\b.txt", "");
    Root.Put("a:b.txt", "");
    Root.Put("plain.txt", "");
    EXPECT_THAT(Listing(u"\\"), ElementsAre(u"\\plain.txt"));
}

TEST_F(HostFiles, ListsNoHiddenFiles) {
    Root.Put("._driver.qvd", "");
    Root.Put("driver.qvd", "");
    EXPECT_THAT(Listing(u".\\"), ElementsAre(u".\\driver.qvd"));
}

TEST_F(HostFiles, NeitherReadsNorWritesOverALinkThatLeadsOutside) {
    Elsewhere.Put("secret.txt", "secret");
    Root.Put("x.txt", "x");
    Root.Link(Elsewhere.Path("secret.txt"), "link.txt");
    EXPECT_EQ(ErrorOfOpening(u".\\link.txt", StreamMode::Existing), PermissionDenied);
    EXPECT_EQ(ErrorOfOpening(u".\\link.txt", StreamMode::Create), PermissionDenied);
    EXPECT_EQ(Files.MoveFile(u".\\link.txt", u".\\x.txt"), PathRefused);
    EXPECT_EQ(Files.MoveFile(u".\\x.txt", u".\\link.txt"), PathRefused);
    EXPECT_EQ(Files.DeleteFile(u".\\link.txt"), PathRefused);
    EXPECT_EQ(Elsewhere.Bytes("secret.txt"), "secret");
    EXPECT_EQ(Root.Bytes("x.txt"), "x");
}

TEST_F(HostFiles, MakesNothingOverALinkToNothing) {
    Root.Link(Elsewhere.Path("new.txt"), "link.txt");
    EXPECT_EQ(ErrorOfOpening(u".\\link.txt", StreamMode::Create), PermissionDenied);
    EXPECT_FALSE(Elsewhere.Has("new.txt"));
}

TEST_F(HostFiles, DeletesALinkAndNotWhatItLeadsTo) {
    Root.Put("real.txt", "");
    Root.Link("real.txt", "link.txt");
    EXPECT_EQ(Files.DeleteFile(u".\\link.txt"), NoError);
    EXPECT_TRUE(Root.Has("real.txt"));
    EXPECT_EQ(Root.Entries(), 1);
}

TEST_F(HostFiles, TouchesNoPipe) {
    ASSERT_EQ(mkfifo(Root.Path("pipe").c_str(), 0600), 0);
    Root.Put("x.txt", "x");
    EXPECT_EQ(ErrorOfOpening(u".\\pipe", StreamMode::Existing), PathRefused);
    EXPECT_EQ(ErrorOfOpening(u".\\pipe", StreamMode::Create), PathRefused);
    EXPECT_EQ(Files.MoveFile(u".\\pipe", u".\\x.txt"), PathRefused);
    EXPECT_EQ(Files.MoveFile(u".\\x.txt", u".\\pipe"), PathRefused);
    EXPECT_EQ(Files.DeleteFile(u".\\pipe"), PathRefused);
    EXPECT_THAT(Listing(u".\\"), ElementsAre(u".\\x.txt"));
}

TEST_F(HostFiles, KeepsThePermissionsOfTheFileThatItCopiesOver) {
    Root.Put("new.txt", "new");
    Root.Put("old.txt", "old");
    chmod(Root.Path("old.txt").c_str(), 0664);
    chmod(Root.Path("new.txt").c_str(), 0600);
    ASSERT_EQ(Copy("new.txt", "old.txt"), NoError);
    EXPECT_EQ(Permissions("old.txt"), 0664U);
}

TEST_F(HostFiles, KeepsThePermissionsOfTheFileThatItMovesOver) {
    Root.Put("new.txt", "new");
    Root.Put("old.txt", "old");
    chmod(Root.Path("old.txt").c_str(), 0664);
    chmod(Root.Path("new.txt").c_str(), 0600);
    ASSERT_EQ(Files.MoveFile(u".\\new.txt", u".\\old.txt"), NoError);
    EXPECT_EQ(Permissions("old.txt"), 0664U);
}

/// The folder of one card and the memory of the device may be different file systems.
TEST_F(HostFiles, MovesAFileToAnotherFileSystem) {
    const std::string card = "/dev/shm/quorin-test-" + std::to_string(getpid());
    std::error_code none;
    struct stat here {};
    struct stat there {};
    if (stat(Root.Path().c_str(), &here) != 0 || stat("/dev/shm", &there) != 0 || here.st_dev == there.st_dev)
        GTEST_SKIP() << "there is one file system alone";
    Root.Put("new.txt", "new");
    std::ofstream(card) << "old";
    FileEntry from;
    FileEntry to;
    ASSERT_EQ(EntryAt(Root.Path("new.txt"), from), NoError);
    ASSERT_EQ(EntryAt(card, to), NoError);
    EXPECT_EQ(MoveOver(from, std::move(to)), NoError);
    std::ifstream moved(card);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(moved), {}), "new");
    EXPECT_FALSE(Root.Has("new.txt"));
    std::filesystem::remove(card, none);
}

TEST_F(HostFiles, MakesFilesAndFoldersForTheirOwnerAlone) {
    Root.Put("open.txt", "new");
    chmod(Root.Path("open.txt").c_str(), 0666);
    const mode_t old = umask(0);
    std::unique_ptr<Folder> folder;
    std::unique_ptr<TextStream> stream;
    EXPECT_EQ(Files.OpenFolder(u".\\folder\\", true, folder), NoError);
    EXPECT_EQ(Files.OpenStream(u".\\folder\\new.txt", StreamMode::Create, stream), NoError);
    EXPECT_EQ(Copy("open.txt", "copy.txt"), NoError);
    EXPECT_EQ(stream->Close(), NoError);
    umask(old);
    EXPECT_EQ(Permissions("folder"), 0700U);
    EXPECT_EQ(Permissions("folder/new.txt"), 0600U);
    EXPECT_EQ(Permissions("copy.txt"), 0600U);
}

TEST_F(HostFiles, KeepsTheOldFileWhenTheDiskFillsUnderACopy) {
    Root.Put("new.txt", std::string(200000, 'n'));
    Root.Put("old.txt", "old");
    {
        const FullDisk full(100000);
        EXPECT_EQ(Copy("new.txt", "old.txt"), DiskFull);
    }
    EXPECT_EQ(Root.Bytes("old.txt"), "old");
    EXPECT_EQ(Root.Entries(), 2) << "something was left beside it";
}

TEST_F(HostFiles, LeavesAWriteProtectedFileAlone) {
    Root.Put("new.txt", "new");
    Root.Put("old.txt", "old");
    chmod(Root.Path().c_str(), 0777);
    chmod(Root.Path("old.txt").c_str(), 0444);
    const OrdinaryUser user;
    EXPECT_EQ(Copy("new.txt", "old.txt"), PermissionDenied);
    EXPECT_EQ(Files.MoveFile(u".\\new.txt", u".\\old.txt"), PermissionDenied);
    EXPECT_EQ(ErrorOfOpening(u".\\old.txt", StreamMode::Create), PermissionDenied);
    EXPECT_EQ(Root.Bytes("old.txt"), "old");
    EXPECT_EQ(Root.Entries(), 2);
}

TEST_F(HostFiles, ReadsAWriteProtectedFileAndDoesNotWriteIt) {
    Root.Put("old.txt", "old\n");
    chmod(Root.Path().c_str(), 0777);
    chmod(Root.Path("old.txt").c_str(), 0444);
    const OrdinaryUser user;
    std::unique_ptr<TextStream> stream;
    ASSERT_EQ(Files.OpenStream(u".\\old.txt", StreamMode::Existing, stream), NoError);
    Text line;
    EXPECT_EQ(stream->ReadLine(line), NoError);
    EXPECT_EQ(line, u"old");
    EXPECT_EQ(stream->WriteLine(u"new"), PermissionDenied);
    EXPECT_EQ(stream->Close(), PermissionDenied) << "a line is missing";
    EXPECT_EQ(Root.Bytes("old.txt"), "old\n");
}

TEST_F(HostFiles, MakesNothingInAWriteProtectedFolder) {
    Root.Put("new.txt", "new");
    chmod(Root.Path().c_str(), 0555);
    {
        const OrdinaryUser user;
        std::unique_ptr<Folder> folder;
        EXPECT_EQ(Files.OpenFolder(u".\\folder\\", true, folder), PermissionDenied);
        EXPECT_EQ(Copy("new.txt", "copy.txt"), PermissionDenied);
        EXPECT_EQ(ErrorOfOpening(u".\\other.txt", StreamMode::Create), PermissionDenied);
        EXPECT_EQ(Files.DeleteFile(u".\\new.txt"), PermissionDenied);
    }
    chmod(Root.Path().c_str(), 0755);
    EXPECT_EQ(Root.Entries(), 1);
}

TEST_F(HostFiles, CopiesIntoAFolderWhereACrashLeftACopy) {
    Root.Put("new.txt", "new");
    Root.Put(".quorin-" + std::to_string(getpid()) + "-0", "half");
    EXPECT_EQ(Copy("new.txt", "old.txt"), NoError);
    EXPECT_EQ(Root.Bytes("old.txt"), "new");
}

TEST_F(HostFiles, LeavesAReaderOfTheOldFileTheOldText) {
    Root.Put("old.txt", "old line\n");
    Root.Put("new.txt", "new line\n");
    std::unique_ptr<TextStream> reader;
    ASSERT_EQ(Files.OpenStream(u".\\old.txt", StreamMode::Existing, reader), NoError);
    ASSERT_EQ(Copy("new.txt", "old.txt"), NoError);
    Text line;
    EXPECT_EQ(reader->ReadLine(line), NoError);
    EXPECT_EQ(line, u"old line");
}

TEST_F(HostFiles, FailsAPathThatIsTooLongForTheHost) {
    Text path = u".";
    for (int part = 0; part < 40; ++part)
        path += u"\\" + Text(200, u'x');
    std::unique_ptr<Folder> folder;
    EXPECT_EQ(Files.OpenFolder(path, true, folder), PathRefused);
    EXPECT_EQ(ErrorOfOpening(path, StreamMode::Create), PathRefused);
}

} // namespace
