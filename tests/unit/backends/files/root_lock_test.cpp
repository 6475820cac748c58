// SPDX-License-Identifier: MIT
#include "backends/files/root_lock.h"

#include "tests/support/temporary_root.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace backends;

namespace {

/// The error with which a file system without locks refuses them; 0 if it has locks.
int FolderLocks = 0;
int FileLocks = 0;

} // namespace

/// Replaces the library's function, because every file system here has locks.
extern "C" int flock(int file, int operation) noexcept {
    struct stat found {};
    const int error = fstat(file, &found) == 0 && S_ISDIR(found.st_mode) ? FolderLocks : FileLocks;
    if (error == 0)
        return static_cast<int>(syscall(SYS_flock, file, operation));
    errno = error;
    return -1;
}

namespace backends {

static void PrintTo(LockResult result, std::ostream* out) {
    constexpr std::array<const char*, 4> Names = {"held", "taken", "no folder", "unguarded"};
    *out << Names.at(static_cast<std::size_t>(result));
}

} // namespace backends

namespace {

/// Another process, which does something, reports that it has, and runs until it is killed.
class OtherProcess {
public:
    explicit OtherProcess(const std::function<void()>& act) {
        std::array<int, 2> told{};
        EXPECT_EQ(pipe2(told.data(), O_CLOEXEC), 0);
        Process_ = fork();
        if (Process_ == 0) {
            act();
            (void)!write(told[1], "x", 1);
            for (;;)
                pause();
        }
        close(told[1]);
        char byte = 0;
        (void)!read(told[0], &byte, 1); // or the end of the pipe, when the process has become another program
        close(told[0]);
    }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;
    ~OtherProcess() { Kill(); }

    void Kill() {
        if (Process_ <= 0)
            return;
        kill(Process_, SIGKILL);
        waitpid(Process_, nullptr, 0);
        Process_ = -1;
    }
    std::string Number() const { return std::to_string(Process_); }

private:
    pid_t Process_ = -1;
};

class RootLocks : public testing::Test {
protected:
    void TearDown() override { FolderLocks = FileLocks = 0; }
    LockResult TakeFirst() { return First.Take(Root.Path(), "quorin"); }
    LockResult TakeSecond() { return Second.Take(Root.Path(), "quorin"); }

    TemporaryRoot Root;
    RootLock First;
    RootLock Second;
};

TEST_F(RootLocks, AFreeRootIsHeld) {
    EXPECT_EQ(TakeFirst(), LockResult::Held);
    EXPECT_EQ(Root.Bytes(".quorin.lock"), "quorin " + std::to_string(getpid()) + "\n");
}

TEST_F(RootLocks, ASecondOneIsToldWhoHasIt) {
    ASSERT_EQ(TakeFirst(), LockResult::Held);
    EXPECT_EQ(TakeSecond(), LockResult::Taken);
    EXPECT_EQ(Second.Holder(), "quorin " + std::to_string(getpid()));
    EXPECT_EQ(Root.Bytes(".quorin.lock"), "quorin " + std::to_string(getpid()) + "\n");
}

TEST_F(RootLocks, AHolderThatCanNotBeReadIsAnotherProgram) {
    ASSERT_EQ(TakeFirst(), LockResult::Held);
    Root.Put(".quorin.lock", "");
    EXPECT_EQ(TakeSecond(), LockResult::Taken);
    EXPECT_EQ(Second.Holder(), "another program");
}

TEST_F(RootLocks, TheLineOfTheHolderDoesNotDriveATerminal) {
    ASSERT_EQ(TakeFirst(), LockResult::Held);
    Root.Put(".quorin.lock", "quorin\x1B[2J " + std::to_string(getpid()) + "\nmore\n");
    TakeSecond();
    EXPECT_EQ(Second.Holder(), "quorin?[2J " + std::to_string(getpid()));
}

TEST_F(RootLocks, IsFreeAfterARelease) {
    ASSERT_EQ(TakeFirst(), LockResult::Held);
    First.Release();
    EXPECT_EQ(Root.Bytes(".quorin.lock"), "");
    EXPECT_EQ(TakeSecond(), LockResult::Held);
    EXPECT_EQ(TakeFirst(), LockResult::Taken);
}

TEST_F(RootLocks, IsFreeAtTheEndOfItsLife) {
    { EXPECT_EQ(RootLock().Take(Root.Path(), "quorin"), LockResult::Held); }
    EXPECT_EQ(TakeFirst(), LockResult::Held);
}

TEST_F(RootLocks, OfAKilledProgramIsFreeByItself) {
    OtherProcess other([this] { TakeFirst(); });
    EXPECT_EQ(TakeSecond(), LockResult::Taken);
    EXPECT_EQ(Second.Holder(), "quorin " + other.Number());
    other.Kill();
    EXPECT_EQ(TakeSecond(), LockResult::Held);
    EXPECT_EQ(Root.Bytes(".quorin.lock"), "quorin " + std::to_string(getpid()) + "\n");
}

TEST_F(RootLocks, IsNotLeftToAProgramThatWasStarted) {
    ASSERT_EQ(TakeFirst(), LockResult::Held);
    const OtherProcess other([] { execlp("sleep", "sleep", "60", static_cast<char*>(nullptr)); });
    First.Release();
    EXPECT_EQ(TakeSecond(), LockResult::Held);
}

TEST_F(RootLocks, AShorterNameLeavesNothingOfALongerOne) {
    Root.Put(".quorin.lock", "a-program-with-a-long-name 1234567\n");
    TakeFirst();
    EXPECT_EQ(Root.Bytes(".quorin.lock"), "quorin " + std::to_string(getpid()) + "\n");
}

TEST_F(RootLocks, TakingAnotherRootLetsGoOfTheFirst) {
    const TemporaryRoot other;
    ASSERT_EQ(TakeFirst(), LockResult::Held);
    ASSERT_EQ(First.Take(other.Path(), "quorin"), LockResult::Held);
    EXPECT_EQ(TakeSecond(), LockResult::Held);
}

TEST_F(RootLocks, AMissingRootIsMade) {
    EXPECT_EQ(First.Take(Root.Path("new/root"), "quorin"), LockResult::Held);
    EXPECT_EQ(Second.Take(Root.Path("new/root"), "quorin"), LockResult::Taken);
}

TEST_F(RootLocks, AFolderThatCanNotBeHadIsRefusedAndWhyIsSaid) {
    Root.Put("file", "");
    EXPECT_EQ(First.Take(Root.Path("file"), "quorin"), LockResult::NoFolder);
    EXPECT_EQ(First.Refusal(), "can't open the root folder " + Root.Path("file") + ": Not a directory");
}

TEST_F(RootLocks, AFolderInWhichNoFileCanBeMadeIsHeldAllTheSame) {
    EXPECT_EQ(First.Take("/proc/self/task", "quorin"), LockResult::Held);
    EXPECT_EQ(Second.Take("/proc/self/task", "quorin"), LockResult::Taken);
    EXPECT_EQ(Second.Holder(), "another program");
}

/// Returns the id of a process that has ended.
std::string DeadProcess() {
    const pid_t process = fork();
    if (process == 0)
        _exit(0);
    waitpid(process, nullptr, 0);
    return std::to_string(process);
}

TEST_F(RootLocks, AProgramThatIsNoMoreIsNotNamed) {
    ASSERT_EQ(TakeFirst(), LockResult::Held);
    for (const std::string& line : {"quorin " + DeadProcess(), std::string("quorin"), std::string("quorin -1"),
                                    std::string("quorin 12x"), std::string("quorin 99999999999999999999")}) {
        Root.Put(".quorin.lock", line + "\n");
        EXPECT_EQ(TakeSecond(), LockResult::Taken);
        EXPECT_EQ(Second.Holder(), "another program") << line;
    }
}

TEST_F(RootLocks, ARemovedLockFileLeavesTheLock) {
    ASSERT_EQ(TakeFirst(), LockResult::Held);
    std::filesystem::remove(Root.Path(".quorin.lock"));
    EXPECT_EQ(TakeSecond(), LockResult::Taken);
    EXPECT_FALSE(Root.Has(".quorin.lock"));
}

TEST_F(RootLocks, AProgramThatGoesByTheFileAloneIsNoticed) {
    Root.Put(".quorin.lock", "quorin " + std::to_string(getpid()) + "\n");
    const Descriptor older(open(Root.Path(".quorin.lock").c_str(), O_RDWR | O_CLOEXEC));
    ASSERT_EQ(flock(older.Number(), LOCK_EX | LOCK_NB), 0);
    EXPECT_EQ(TakeFirst(), LockResult::Taken);
    EXPECT_EQ(First.Holder(), "quorin " + std::to_string(getpid()));
    EXPECT_EQ(flock(older.Number(), LOCK_UN), 0);
    EXPECT_EQ(TakeSecond(), LockResult::Held) << "the one that was refused holds nothing";
}

TEST_F(RootLocks, AProgramThatGoesByTheFileAloneIsKeptAway) {
    ASSERT_EQ(TakeFirst(), LockResult::Held);
    const Descriptor older(open(Root.Path(".quorin.lock").c_str(), O_RDWR | O_CLOEXEC));
    EXPECT_NE(flock(older.Number(), LOCK_EX | LOCK_NB), 0);
}

TEST_F(RootLocks, TheFileIsForAllToReadWhateverTheUmask) {
    const mode_t old = umask(077);
    TakeFirst();
    umask(old);
    struct stat found {};
    ASSERT_EQ(stat(Root.Path(".quorin.lock").c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 07777, 0644U);
}

class FileSystemsWithoutFolderLocks : public RootLocks, public testing::WithParamInterface<int> {};

TEST_P(FileSystemsWithoutFolderLocks, AreGuardedByTheFile) {
    FolderLocks = GetParam();
    EXPECT_EQ(TakeFirst(), LockResult::Held);
    EXPECT_EQ(TakeSecond(), LockResult::Taken);
    EXPECT_EQ(Second.Holder(), "quorin " + std::to_string(getpid()));
}

TEST_P(FileSystemsWithoutFolderLocks, LetAProgramStartThatNobodyGuardsAndSaySo) {
    FolderLocks = FileLocks = GetParam();
    EXPECT_EQ(TakeFirst(), LockResult::Unguarded);
    EXPECT_EQ(First.Warning(), Root.Path() + " can't be locked: a second program could use it at the same time");
    EXPECT_EQ(TakeSecond(), LockResult::Unguarded);
}

INSTANTIATE_TEST_SUITE_P(Errors, FileSystemsWithoutFolderLocks, testing::Values(EBADF, EINVAL, ENOLCK, EOPNOTSUPP));

/// Runs the action as an ordinary user and returns its result: nothing is write-protected for root.
int AsOrdinaryUser(const std::function<int()>& act) {
    const pid_t process = fork();
    if (process == 0) {
        if (getuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
            _exit(99);
        _exit(act());
    }
    int status = 0;
    waitpid(process, &status, 0);
    return WEXITSTATUS(status);
}

TEST_F(RootLocks, AWriteProtectedFolderIsHeldWithoutAFile) {
    ASSERT_EQ(chmod(Root.Path().c_str(), 0555), 0);
    EXPECT_EQ(AsOrdinaryUser([this] { return static_cast<int>(TakeFirst()); }), static_cast<int>(LockResult::Held));
    EXPECT_FALSE(Root.Has(".quorin.lock"));
}

TEST_F(RootLocks, AnotherUsersLockIsNoticed) {
    if (getuid() != 0)
        GTEST_SKIP() << "takes two users, and so root";
    ASSERT_EQ(chmod(Root.Path().c_str(), 0755), 0);
    ASSERT_EQ(TakeFirst(), LockResult::Held);
    EXPECT_EQ(AsOrdinaryUser([this] {
                  const bool taken = TakeSecond() == LockResult::Taken;
                  return taken && Second.Holder() == "quorin " + std::to_string(getppid()) ? 0 : 1;
              }),
              0);
}

/// A lock file of an older version of the program, which no other user can read.
TEST_F(RootLocks, AnotherUsersFileThatCanNotBeOpenedIsNoFreeRoot) {
    if (getuid() != 0)
        GTEST_SKIP() << "takes two users, and so root";
    ASSERT_EQ(chmod(Root.Path().c_str(), 0777), 0);
    ASSERT_EQ(TakeFirst(), LockResult::Held);
    ASSERT_EQ(chmod(Root.Path(".quorin.lock").c_str(), 0600), 0);
    EXPECT_EQ(AsOrdinaryUser([this] { return static_cast<int>(TakeSecond()); }), static_cast<int>(LockResult::Taken));
    First.Release();
    EXPECT_EQ(AsOrdinaryUser([this] { return static_cast<int>(TakeSecond()); }), static_cast<int>(LockResult::Held));
}

TEST_F(RootLocks, TheFileOfAnEndedUserIsReplacedByOurOwn) {
    if (getuid() != 0)
        GTEST_SKIP() << "takes two users, and so root";
    ASSERT_EQ(chmod(Root.Path().c_str(), 0777), 0);
    ASSERT_EQ(TakeFirst(), LockResult::Held);
    First.Release();
    EXPECT_EQ(AsOrdinaryUser([this] {
                  const bool held = TakeFirst() == LockResult::Held;
                  return held && Root.Bytes(".quorin.lock") == "quorin " + std::to_string(getpid()) + "\n" ? 0 : 1;
              }),
              0);
}

TEST_F(RootLocks, ALinkIsNotFollowed) {
    Root.Put("table.txt", "NAME|INFFILE\n");
    Root.Link("table.txt", ".quorin.lock");
    EXPECT_EQ(TakeFirst(), LockResult::Held);
    EXPECT_EQ(TakeSecond(), LockResult::Taken);
    EXPECT_EQ(Second.Holder(), "another program");
    EXPECT_EQ(Root.Bytes("table.txt"), "NAME|INFFILE\n");
}

TEST_F(RootLocks, WhatIsNoFileIsLeftAloneAndTheFolderIsLocked) {
    ASSERT_EQ(mkfifo(Root.Path(".quorin.lock").c_str(), 0600), 0);
    EXPECT_EQ(TakeFirst(), LockResult::Held);
    EXPECT_EQ(TakeSecond(), LockResult::Taken);
    First.Release();
    std::filesystem::remove(Root.Path(".quorin.lock"));
    std::filesystem::create_directory(Root.Path(".quorin.lock"));
    EXPECT_EQ(TakeFirst(), LockResult::Held);
    EXPECT_EQ(TakeSecond(), LockResult::Taken);
}

} // namespace
