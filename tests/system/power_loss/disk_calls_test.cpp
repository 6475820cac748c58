// SPDX-License-Identifier: MIT
// The layer below the program counts each call that changes a file, by any routine and any form of path, and applies
// the plan to the right one.
#include "tests/system/power_loss/disk_calls.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/openat2.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace disk {
namespace {

using testing::ElementsAre;

class DiskCalls : public testing::Test {
protected:
    DiskCalls() {
        WriteTree(Folder.Path(), {{"sub"}, {{"sub/old", "0123456789"}}});
        Here = ::open(Folder.Path().c_str(), O_RDONLY | O_DIRECTORY);
    }
    ~DiskCalls() override { ::close(Here); }

    std::string At(const std::string& name) const { return Folder.Path() + "/" + name; }
    std::string Bytes(const std::string& name) const { return ReadTree(Folder.Path()).Files[name]; }
    /// Returns the wait status of a child that performs the action.
    int StatusOf(const std::function<void()>& action) const {
        const pid_t child = ::fork();
        if (child == 0) {
            action();
            ::_exit(0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        return status;
    }
    /// Appends twelve bytes to a file, in three steps: opening, writing, syncing.
    bool Append() const {
        const int file = ::open(At("sub/old").c_str(), O_WRONLY | O_APPEND);
        if (file < 0)
            return false;
        const bool written = ::write(file, "abcdefghijkl", 12) == 12 && ::fsync(file) == 0;
        ::close(file);
        return written;
    }

    const FreshFolder Folder;
    int Here = -1;
};

TEST_F(DiskCalls, AreSeenByEveryName) {
    const Watch watch(Folder.Path());
    const int a = ::open(At("a").c_str(), O_RDWR | O_CREAT, 0600);
    const int b = ::openat(Here, "b", O_RDWR | O_CREAT | O_EXCL, 0600);
    open_how how{O_RDWR | O_CREAT, 0600, RESOLVE_BENEATH};
    const int c = static_cast<int>(::syscall(SYS_openat2, Here, "c", &how, sizeof how));
    ::mkdir(At("d").c_str(), 0700);
    ::mkdirat(Here, "e", 0700);
    EXPECT_EQ(::pwrite(a, "x", 1, 0), 1);
    EXPECT_EQ(::write(b, "y", 1), 1);
    EXPECT_EQ(::ftruncate(c, 0), 0);
    EXPECT_EQ(::fsync(a) + ::fdatasync(b) + ::fsync(Here), 0);
    ::rename(At("a").c_str(), At("f").c_str());
    ::renameat(Here, "b", Here, "g");
    ::unlink(At("c").c_str());
    ::unlinkat(Here, "f", 0);
    for (const int file : {a, b, c})
        ::close(file);
    EXPECT_THAT(Watch::Kinds(), ElementsAre(Call::Open, Call::Open, Call::Open, Call::MakeFolder, Call::MakeFolder,
                                            Call::Write, Call::Write, Call::Truncate, Call::Sync, Call::Sync,
                                            Call::SyncFolder, Call::Rename, Call::Rename, Call::Unlink, Call::Unlink));
    EXPECT_EQ(Watch::StepsTaken().size(), 15U);
    EXPECT_EQ(Watch::StepsTaken()[1].Path, "b");
    EXPECT_EQ(Watch::StepsTaken()[12].File, Watch::StepsTaken()[1].File);
}

TEST_F(DiskCalls, OfReadersAreCountedByThemselves) {
    const Watch watch(Folder.Path());
    std::array<char, 4> bytes{};
    const int file = ::open(At("sub/old").c_str(), O_RDONLY);
    EXPECT_EQ(::pread(file, bytes.data(), bytes.size(), 0), 4);
    EXPECT_EQ(::read(file, bytes.data(), bytes.size()), 4);
    ::close(file);
    EXPECT_EQ(Watch::Reads(), 3);
    EXPECT_EQ(Watch::Steps(), 0);
}

TEST_F(DiskCalls, ElsewhereAreNoneOfItsBusiness) {
    const FreshFolder elsewhere;
    const Watch watch(Folder.Path(), {Blow::FullFromHere, 1, ENOSPC, Counted::Steps});
    const int file = ::open((elsewhere.Path() + "/a").c_str(), O_RDWR | O_CREAT, 0600);
    EXPECT_EQ(::write(file, "x", 1), 1);
    ::close(file);
    EXPECT_EQ(Watch::Steps(), 0);
}

TEST_F(DiskCalls, OfSqliteAreSeenToo) {
    const Watch watch(Folder.Path());
    sqlite3* connection = nullptr;
    ASSERT_EQ(sqlite3_open(At("a.sqlite").c_str(), &connection), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(connection, "CREATE TABLE A(B)", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(connection);
    std::set<std::string> paths;
    for (const Step& step : Watch::StepsTaken())
        paths.insert(step.Path);
    EXPECT_THAT(paths, ElementsAre("", "a.sqlite", "a.sqlite-journal"));
    EXPECT_GT(Watch::Steps(), 10);
    EXPECT_GT(Watch::Reads(), 0);
}

TEST_F(DiskCalls, FailWhereTheyAreToldTo) {
    for (int step = 1; step <= 3; ++step) {
        const Watch watch(Folder.Path(), {Blow::Fail, step, EIO, Counted::Steps});
        EXPECT_FALSE(Append());
        EXPECT_EQ(errno, EIO);
        EXPECT_TRUE(Watch::Struck());
        EXPECT_EQ(Watch::Steps(), step);
    }
    EXPECT_EQ(Bytes("sub/old"), "0123456789abcdefghijkl"); // in the third round only the sync failed
}

TEST_F(DiskCalls, OfAFullDiskTakeHalfOfAWriteAndThenNothing) {
    const Watch watch(Folder.Path(), {Blow::ShortWrite, 2, ENOSPC, Counted::Steps});
    const int file = ::open(At("sub/old").c_str(), O_WRONLY | O_TRUNC);
    EXPECT_EQ(::pwrite(file, "abcd", 4, 0), 2);
    EXPECT_EQ(::pwrite(file, "cd", 2, 2), -1);
    EXPECT_EQ(errno, ENOSPC);
    EXPECT_EQ(::pwrite(file, "cd", 2, 2), 2);
    ::close(file);
    EXPECT_EQ(Bytes("sub/old"), "abcd");
}

TEST_F(DiskCalls, OfADiskThatStaysFullFailWhereTheyNeedRoom) {
    const Watch watch(Folder.Path(), {Blow::FullFromHere, 2, ENOSPC, Counted::Steps});
    const int file = ::open(At("sub/old").c_str(), O_WRONLY);
    EXPECT_EQ(::write(file, "a", 1), -1);
    EXPECT_EQ(::fsync(file), 0);
    EXPECT_EQ(::write(file, "a", 1), -1);
    EXPECT_EQ(::open(At("new").c_str(), O_WRONLY | O_CREAT, 0600), -1);
    EXPECT_EQ(::unlink(At("sub/old").c_str()), 0);
    ::close(file);
}

TEST_F(DiskCalls, KillTheProgramWhereTheyAreToldTo) {
    const struct {
        Blow What;
        const char* Left;
    } rows[] = {{Blow::KillBefore, ""}, {Blow::KillInside, "abcdef"}, {Blow::KillAfter, "abcdefghijkl"}};
    for (const auto& row : rows) {
        WriteTree(Folder.Path(), {{"sub"}, {{"sub/old", ""}}});
        const int status = StatusOf([&] {
            const Watch watch(Folder.Path(), {row.What, 2, 0, Counted::Steps});
            Append();
        });
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
        EXPECT_EQ(Bytes("sub/old"), row.Left);
    }
    EXPECT_EQ(StatusOf([] {}), 0);
}

} // namespace
} // namespace disk
