// SPDX-License-Identifier: MIT
// What the program does when one of its three standard streams is closed, full or not read.
#include "tests/unit/apps/quorin-console/console_run.h"

#include <array>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace console {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string ASaveThatFails = "choose Start...\nchoose Ok\nchoose Open\ntap 0 1\nset 12\ntick 500\ndisk fail -1\n"
                                   "choose New Record\nquit\n";

class StandardStreams : public Console {
protected:
    /// Returns the contents of all files of the root folder.
    std::string EveryFile() const {
        std::string bytes;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Root.Path())) {
            if (entry.is_regular_file())
                bytes += Root.Bytes(std::filesystem::relative(entry.path(), Root.Path()).string());
        }
        return bytes;
    }
};

TEST_F(StandardStreams, AMessageGoesIntoNoFileWhenStandardErrorIsClosed) {
    const Outcome run = Shell(Program() + " <input >output 2>&-", ASaveThatFails);
    EXPECT_EQ(run.Status, 0);
    EXPECT_THAT(run.Output, HasSubstr(R"({"done":"quit"})"));
    EXPECT_THAT(EveryFile(), Not(HasSubstr("the disk is full")));
}

TEST_F(StandardStreams, AnswersDoNotLandInAFileWhereStandardOutputIsClosed) {
    const Outcome run = Shell(Program() + " <input >&- 2>errors", ASaveThatFails);
    EXPECT_EQ(run.Status, 4);
    EXPECT_EQ(run.Errors, "quorin-console: can't write to standard output: Bad file descriptor\n");
    EXPECT_THAT(EveryFile(), Not(HasSubstr("ready")));
}

TEST_F(StandardStreams, AClosedInputHasEndedAtOnce) {
    const Outcome run = Shell(Program() + " <&- >output 2>errors", "");
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Output, "{\"ready\":0}\n");
    EXPECT_EQ(run.Errors, "");
}

TEST_F(StandardStreams, AllThreeMayBeClosed) {
    const std::string before = EveryFile();
    EXPECT_EQ(Shell(Program() + " input <&- >&- 2>&-", ASaveThatFails).Status, 4);
    EXPECT_THAT(EveryFile(), Not(HasSubstr("quorin-console:")));
    EXPECT_EQ(Root.Bytes("Quorin/qrnctrl.txt"), "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
}

TEST_F(StandardStreams, AFullOutputEndsTheProgramWithFourAndAMessage) {
    for (const char* options : {"", " --strict", " --help", " --version"}) {
        const Outcome run = Shell(Program() + options + " <input >/dev/full 2>errors", "tick 1\nquit\n");
        EXPECT_EQ(run.Status, 4) << options;
        EXPECT_EQ(run.Errors, "quorin-console: can't write to standard output: No space left on device\n") << options;
    }
}

/// A reader that reads only the first answer has closed the pipe when the next one comes.
TEST_F(StandardStreams, AnUnreadOutputEndsTheProgramWithFourAndAMessage) {
    std::string input;
    for (int i = 0; i < 1000; ++i)
        input += "tick 1\n";
    const Outcome run =
        Shell("{ " + Program() + " <input 2>errors; echo $? >status; } | head -n 1 >output; exit $(cat status)", input);
    EXPECT_EQ(run.Output, "{\"ready\":0}\n");
    EXPECT_EQ(run.Status, 4);
    EXPECT_EQ(run.Errors, "quorin-console: can't write to standard output: Broken pipe\n");
}

/// Without a check at each event the program would only notice when it answers, an hour later.
TEST_F(StandardStreams, AnOutputLostInALongWaitIsNoticedAtTheNextEvent) {
    const Outcome run = Shell("timeout 60 " + Program() + " --clock real <input >/dev/full 2>errors", "tick 3600000\n");
    EXPECT_EQ(run.Status, 4);
}

TEST_F(StandardStreams, AMessageThatNobodyReadsIsNoReasonToEnd) {
    const Outcome run =
        Shell("{ " + Program() + " <input 2>&1 >output; echo $? >status; } | true; exit $(cat status)", ASaveThatFails);
    EXPECT_EQ(run.Status, 0);
    EXPECT_THAT(run.Output, HasSubstr(R"({"done":"quit"})"));
}

/// A limit on the size of files is treated as a full disk.
TEST_F(StandardStreams, AFileThatMayNotGrowIsNoReasonToEndByASignal) {
    std::string content = "Moisture|Day\n";
    while (content.size() < 20000)
        content += "some place|\n";
    Root.Put("Quorin/qrn0001.txt", content);
    const std::string edit = "choose Start...\nchoose Ok\nchoose Open\ntap 0 1\nset 12\nkey 13\nchoose New Record\n";
    const Outcome run =
        Shell("bash -c 'ulimit -f 16; exec \"$0\" \"$@\"' " + Program() + " <input >output 2>errors", edit);
    EXPECT_EQ(run.Status, 1);
    EXPECT_THAT(run.Errors, HasSubstr("the disk is full\nquorin-console: row 1 of qrn0001.txt was NOT saved\n"));
    EXPECT_EQ(Root.Bytes("Quorin/qrn0001.txt"), content);
}

/// The pipe has the mode that its other holders chose. Output that does not fit is written once there is space.
TEST_F(StandardStreams, AnOutputThatTakesNoMoreJustNowIsWaitedFor) {
    constexpr int Commands = 4000;
    std::string input;
    for (int i = 0; i < Commands; ++i)
        input += "tick 1\n";
    support::TemporaryFolder place;
    place.Put("input", input);
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    ASSERT_EQ(::fcntl(ends[1], F_SETFL, O_NONBLOCK), 0);
    const std::string root = Root.Path().string();
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(::open((place.Path() / "input").c_str(), O_RDONLY), STDIN_FILENO);
        ::dup2(ends[1], STDOUT_FILENO);
        ::execl(QUORIN_CONSOLE, QUORIN_CONSOLE, "--root", root.c_str(), nullptr);
        ::_exit(127);
    }
    ::close(ends[1]);
    std::this_thread::sleep_for(std::chrono::milliseconds(500)); // the pipe fills
    std::string output;
    std::array<char, 4096> block;
    for (ssize_t count = 0; (count = ::read(ends[0], block.data(), block.size())) > 0;)
        output.append(block.data(), static_cast<std::size_t>(count));
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 2 * Commands + 1);
}

/// Root can open any file, so the permissions are checked.
TEST_F(StandardStreams, WhatIsMadeUnderAnyUmaskCanBeOpenedByItsOwner) {
    for (const char* umask : {"0777", "0", "022"}) {
        const support::TemporaryFolder place;
        const std::string root = (place.Path() / "new" / "root").string();
        const Outcome run = Shell(std::string("umask ") + umask + "; '" QUORIN_CONSOLE "' --device 1 --root '" + root +
                                      "' <input >output 2>errors",
                                  "choose inf editor...\nchoose New\nset Meter\nchoose Ok\nchoose Preferences...\n"
                                  "tap 3\n");
        EXPECT_EQ(run.Status, 0) << run.Errors;
        int files = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(place.Path())) {
            struct stat found {};
            ASSERT_EQ(::stat(entry.path().c_str(), &found), 0);
            const bool isLock = entry.path().filename() == ".quorin.lock"; // everyone may read its line
            EXPECT_EQ(found.st_mode & 0777, entry.is_directory() ? 0700U
                                            : isLock             ? 0644U
                                                                 : 0600U)
                << entry.path() << " under " << umask;
            files += entry.is_directory() ? 0 : 1;
        }
        EXPECT_GE(files, 3) << "a database, the settings and the lock";
    }
}

} // namespace
} // namespace console
