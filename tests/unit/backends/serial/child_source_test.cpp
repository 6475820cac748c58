// SPDX-License-Identifier: MIT
#include "backends/serial/child_source.h"

#include "tests/support/plugged_instrument.h"
#include "tests/support/temporary_root.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <thread>

namespace backends {
namespace {

/// Reads until so many bytes have come or the command has ended.
std::string Receive(ChildSource& source, std::size_t count) {
    std::string bytes;
    while (bytes.size() < count && Tells(source.Descriptor()) && source.TakeAvailable(bytes) != ReadState::Gone) {
    }
    return bytes;
}

/// Reads everything until the command has ended.
std::string ReceiveAll(ChildSource& source) {
    std::string bytes;
    for (int times = 0; times < 1000 && source.TakeAvailable(bytes) != ReadState::Gone; ++times)
        Tells(source.Descriptor(), 10);
    EXPECT_EQ(source.Descriptor(), -1);
    return bytes;
}

bool Runs(pid_t process) {
    return kill(process, 0) == 0;
}

TEST(ChildSource, BringsWhatTheCommandWrites) {
    ChildSource source("printf 'a b\\r\\n'; cat");
    ASSERT_EQ(source.Open(u"9600,N,8,1").Error, NoError);
    EXPECT_EQ(Receive(source, 5), "a b\r\n");
    std::string bytes;
    EXPECT_EQ(source.TakeAvailable(bytes), ReadState::Nothing);
}

TEST(ChildSource, IsRunByTheShellAsItStands) {
    ChildSource source("x='1 2'; echo \"$x\" | tr 1 3 && echo '*'");
    ASSERT_EQ(source.Open(u"").Error, NoError);
    EXPECT_EQ(ReceiveAll(source), "3 2\n*\n");
}

TEST(ChildSource, GivesWhatCameBeforeTheEndAndThenItsStatus) {
    ChildSource source("echo last; exit 3");
    ASSERT_EQ(source.Open(u"").Error, NoError);
    EXPECT_EQ(ReceiveAll(source), "last\n");
    EXPECT_EQ(source.Ending(), "the command has ended with status 3");
}

TEST(ChildSource, TellsACommandThatIsNotThere) {
    ChildSource source("exec 2>/dev/null; no-such-command");
    ASSERT_EQ(source.Open(u"").Error, NoError);
    EXPECT_EQ(ReceiveAll(source), "");
    EXPECT_EQ(source.Ending(), "the command has ended with status 127");
}

TEST(ChildSource, TellsACommandThatWasKilled) {
    ChildSource source("kill -9 $$");
    ASSERT_EQ(source.Open(u"").Error, NoError);
    ReceiveAll(source);
    EXPECT_EQ(source.Ending(), "the command was ended by signal 9");
}

TEST(ChildSource, IsGoneWithItsCommandWhateverThatHasLeftRunning) {
    ChildSource source("sleep 60 & echo $!");
    ASSERT_EQ(source.Open(u"").Error, NoError);
    const pid_t left = std::stoi(ReceiveAll(source));
    for (int times = 0; times < 200 && Runs(left); ++times)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_FALSE(Runs(left)) << "it was started by the command, and ends with it";
    kill(left, SIGKILL);
}

TEST(ChildSource, IsGoneWhenTheCommandClosesItsOutput) {
    ChildSource source("exec >&-; sleep 60");
    ASSERT_EQ(source.Open(u"").Error, NoError);
    ReceiveAll(source);
    EXPECT_EQ(source.Ending(), "the command has closed its output");
}

TEST(ChildSource, EndsAndReapsTheCommandWhenItIsClosed) {
    ChildSource source("echo $$; exec sleep 60");
    ASSERT_EQ(source.Open(u"").Error, NoError);
    const pid_t process = std::stoi(Receive(source, 2));
    ASSERT_TRUE(Runs(process));
    source.Close();
    EXPECT_FALSE(Runs(process)) << "neither it nor its remains";
    EXPECT_EQ(source.Descriptor(), -1);
    EXPECT_EQ(source.Ending(), "");
}

TEST(ChildSource, EndsACommandThatDoesNotWantTo) {
    ChildSource source("trap '' TERM HUP; echo $$; while :; do sleep 0.01; done");
    ASSERT_EQ(source.Open(u"").Error, NoError);
    const pid_t process = std::stoi(Receive(source, 2));
    source.Close();
    EXPECT_FALSE(Runs(process));
}

TEST(ChildSource, LetsACommandTidyUp) {
    const TemporaryRoot root;
    ChildSource source("trap 'echo tidy > " + root.Path("note") +
                       "; exit' TERM; echo ready; while :; do sleep 0.01; done");
    ASSERT_EQ(source.Open(u"").Error, NoError);
    ASSERT_EQ(Receive(source, 6), "ready\n");
    source.Close();
    EXPECT_EQ(root.Bytes("note"), "tidy\n");
}

TEST(ChildSource, CanBeOpenedAgain) {
    ChildSource source("echo again");
    ASSERT_EQ(source.Open(u"").Error, NoError);
    ReceiveAll(source);
    ASSERT_EQ(source.Open(u"").Error, NoError);
    EXPECT_EQ(ReceiveAll(source), "again\n");
}

// The program ignores the signal of a broken pipe and has files and locks open. A command must inherit none of this.
TEST(ChildSource, StartsTheCommandAsAShellWould) {
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    const TemporaryRoot root;
    root.Put("file", "");
    const int left = open(root.Path("file").c_str(), O_RDONLY); // not marked to be closed when a command starts
    ChildSource source("grep SigIgn /proc/$$/status; ls /proc/$$/fd");
    ASSERT_EQ(source.Open(u"").Error, NoError);
    const std::string told = ReceiveAll(source);
    std::signal(SIGPIPE, before);
    close(left);
    // The command has no pipes, because the shell would have their ends open for a moment.
    EXPECT_EQ(told, "SigIgn:\t0000000000000000\n0\n1\n2\n");
}

TEST(ChildSource, GivesTheCommandAnInputOnWhichNothingComes) {
    ChildSource source("cat; echo ended");
    ASSERT_EQ(source.Open(u"").Error, NoError);
    EXPECT_FALSE(Tells(source.Descriptor(), 100)) << "an end of the input would end many a command";
}

} // namespace
} // namespace backends
