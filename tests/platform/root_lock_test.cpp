// SPDX-License-Identifier: MIT
#include "platform/common/root_lock.h"

#include "tests/platform/temporary_root.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace platform::common;

namespace platform::common {

static void PrintTo(LockResult result, std::ostream* out) {
    *out << (result == LockResult::Held ? "held" : result == LockResult::Taken ? "taken" : "not lockable");
}

} // namespace platform::common

namespace {

/// Another process, which does something, tells when it has, and stays until it is killed.
class OtherProcess {
public:
    explicit OtherProcess(const std::function<void()>& act) {
        std::array<int, 2> told{};
        EXPECT_EQ(pipe2(told.data(), O_CLOEXEC), 0);
        Process = fork();
        if (Process == 0) {
            act();
            (void)!write(told[1], "x", 1);
            for (;;)
                pause();
        }
        close(told[1]);
        char byte = 0;
        (void)!read(told[0], &byte, 1); // or the end, when the process has become another program
        close(told[0]);
    }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;
    ~OtherProcess() { Kill(); }

    void Kill() {
        if (Process <= 0)
            return;
        kill(Process, SIGKILL);
        waitpid(Process, nullptr, 0);
        Process = -1;
    }
    std::string Number() const { return std::to_string(Process); }

private:
    pid_t Process = -1;
};

class RootLocks : public testing::Test {
protected:
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
    Root.Put(".quorin.lock", "quorin\x1B[2J 7\nmore\n");
    TakeSecond();
    EXPECT_EQ(Second.Holder(), "quorin?[2J 7");
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

TEST_F(RootLocks, AFolderThatCanNotBeWrittenHasNoLock) {
    EXPECT_EQ(First.Take("/proc/self", "quorin"), LockResult::NotLockable);
    Root.Put("file", "");
    EXPECT_EQ(First.Take(Root.Path("file"), "quorin"), LockResult::NotLockable);
}

/// What an ordinary user gets: nothing is write-protected for root.
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

TEST_F(RootLocks, AWriteProtectedFolderHasNoLock) {
    ASSERT_EQ(chmod(Root.Path().c_str(), 0555), 0);
    EXPECT_EQ(AsOrdinaryUser([this] { return static_cast<int>(TakeFirst()); }),
              static_cast<int>(LockResult::NotLockable));
    EXPECT_FALSE(Root.Has(".quorin.lock"));
}

TEST_F(RootLocks, AnotherUsersLockIsNoticed) {
    if (getuid() != 0)
        GTEST_SKIP() << "takes two users, and so root";
    ASSERT_EQ(chmod(Root.Path().c_str(), 0755), 0);
    ASSERT_EQ(TakeFirst(), LockResult::Held);
    ASSERT_EQ(chmod(Root.Path(".quorin.lock").c_str(), 0644), 0);
    EXPECT_EQ(AsOrdinaryUser([this] { return static_cast<int>(TakeSecond()); }), static_cast<int>(LockResult::Taken));
}

TEST_F(RootLocks, ALinkIsNotFollowed) {
    Root.Put("table.txt", "NAME|INFFILE\n");
    Root.Link("table.txt", ".quorin.lock");
    EXPECT_EQ(TakeFirst(), LockResult::NotLockable);
    EXPECT_EQ(Root.Bytes("table.txt"), "NAME|INFFILE\n");
}

TEST_F(RootLocks, WhatIsNoFileIsNoLock) {
    ASSERT_EQ(mkfifo(Root.Path(".quorin.lock").c_str(), 0600), 0);
    EXPECT_EQ(TakeFirst(), LockResult::NotLockable);
    std::filesystem::remove(Root.Path(".quorin.lock"));
    std::filesystem::create_directory(Root.Path(".quorin.lock"));
    EXPECT_EQ(TakeFirst(), LockResult::NotLockable);
}

} // namespace
