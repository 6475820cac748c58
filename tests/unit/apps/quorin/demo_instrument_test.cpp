// SPDX-License-Identifier: MIT
// The demonstration's instrument: what it sends, and that its process ends with its owner.
#include "apps/quorin/demo_instrument.h"

#include "tests/support/running_instrument.h"
#include "tests/unit/apps/quorin-instrument/instrument_support.h"

#include <cerrno>
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorin {
namespace {

using instrument::Eventually;
using instrument::LinesOf;
using instrument::Reader;
using testing::HasSubstr;

constexpr std::chrono::milliseconds Short{50};

/// Returns the next record, from its first line to its last.
std::string NextRecord(Reader& reader) {
    std::string record;
    while (record.find("[/BLob]\r\n") == std::string::npos) {
        const std::string byte = reader.Read(1);
        if (byte.empty())
            break;
        record += byte;
    }
    return record;
}

TEST(DemoInstrument, SendsItsIntroductionAndThenAResult) {
    const DemoInstrument meter(Short);
    ASSERT_EQ(meter.Problem(), "");
    Reader reader(meter.Port());
    ASSERT_TRUE(reader.IsOpen()) << meter.Port();
    EXPECT_EQ(NextRecord(reader), "[BLob]\r\n[CONNECT \"QI-0001\"]\r\n[/BLob]\r\n");
    const std::string result = NextRecord(reader);
    EXPECT_EQ(result.substr(0, 28), "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n");
    EXPECT_THAT(result, HasSubstr("[RESULT_TYPE \"Moisture\" \"M1\"]\r\n"));
    EXPECT_THAT(result, HasSubstr("[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"));
}

TEST(DemoInstrument, SendsEachKindOfResultInTurn) {
    const DemoInstrument meter(Short);
    Reader reader(meter.Port());
    for (const char* const kind : {"Moisture", "Temperature", "Humidity", "Moisture"}) {
        NextRecord(reader);
        EXPECT_THAT(NextRecord(reader), HasSubstr("[RESULT_TYPE \"" + std::string(kind)));
    }
}

// A listener that closed the port during the introduction has missed it, and would refuse all readings of that origin.
TEST(DemoInstrument, IntroducesItselfAgainForAListenerThatMissedIt) {
    const DemoInstrument meter(Short);
    {
        Reader hasty(meter.Port());
        hasty.Read(1);
    }
    Reader reader(meter.Port());
    std::string heard;
    while (heard.find("[RESULT_VALUE") == std::string::npos) {
        const std::string more = reader.Read(1);
        ASSERT_FALSE(more.empty());
        heard += more;
    }
    NextRecord(reader);
    EXPECT_THAT(NextRecord(reader), HasSubstr("[CONNECT \"QI-0001\"]"));
}

TEST(DemoInstrument, WaitsForTheIntervalBetweenResults) {
    constexpr std::chrono::milliseconds interval{400};
    const DemoInstrument meter(interval);
    Reader reader(meter.Port());
    NextRecord(reader);
    NextRecord(reader);
    const auto start = std::chrono::steady_clock::now();
    NextRecord(reader);
    EXPECT_GE(std::chrono::steady_clock::now() - start, interval / 2);
}

TEST(DemoInstrument, SaysNothingOfWhatItsOwnerHasYetToWrite) {
    testing::internal::CaptureStdout();
    std::printf("said by the owner\n"); // buffered, because it goes into a file
    std::string problem;
    {
        const DemoInstrument meter(Short);
        problem = meter.Problem();
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "said by the owner\n");
    EXPECT_EQ(problem, "");
}

/// True if this process has a child, running or ended.
bool HasAChild() {
    siginfo_t child = {};
    return ::waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT) == 0;
}

TEST(DemoInstrument, IsGoneWithItsObject) {
    std::string port;
    {
        const DemoInstrument meter(Short);
        port = meter.Port();
        EXPECT_TRUE(HasAChild());
        EXPECT_TRUE(Reader(port).IsOpen());
    }
    EXPECT_FALSE(HasAChild()) << "neither running nor a zombie";
    EXPECT_FALSE(Reader(port).IsOpen());
}

TEST(DemoInstrument, GoesEvenInTheMiddleOfARecord) {
    {
        const DemoInstrument meter(Short);
        Reader reader(meter.Port());
        reader.Read(1);
    }
    EXPECT_FALSE(HasAChild());
}

TEST(DemoInstrument, TellsWhenItCanNotBeStarted) {
    rlimit before = {};
    ::getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none = {0, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &none);
    const DemoInstrument meter(Short);
    ::setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(meter.Port(), "");
    EXPECT_EQ(meter.Problem(), "Too many open files");
}

/// A process that owns an instrument and listens to it. A child that it leaves when it ends becomes a child of this
/// process.
class Owner {
public:
    Owner() {
        ::prctl(PR_SET_CHILD_SUBREAPER, 1);
        int ends[2];
        if (::pipe(ends) != 0)
            return;
        Process_ = ::fork();
        if (Process_ == 0)
            Own(ends[1]);
        ::close(ends[1]);
        for (char byte = 0; ::read(ends[0], &byte, 1) == 1 && byte != '\n';)
            Port += byte;
        ::close(ends[0]);
    }
    ~Owner() {
        ::kill(-Process_, SIGKILL); // a child that should have ended would keep the test's output open
        while (::waitpid(-1, nullptr, 0) > 0) {
        }
    }
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;

    void End(int signal) const {
        ::kill(Process_, signal);
        ::waitpid(Process_, nullptr, 0);
    }

    std::string Port;

private:
    [[noreturn]] static void Own(int answer) {
        ::setpgid(0, 0);
        const DemoInstrument meter(Short);
        const std::string line = meter.Port() + "\n";
        [[maybe_unused]] const auto written = ::write(answer, line.data(), line.size());
        ::close(answer);
        ::signal(SIGUSR1, [](int) { ::_exit(0); }); // an end that runs no destructors
        while (true)
            ::pause();
    }

    int Process_ = -1;
};

class AfterItsOwner : public testing::TestWithParam<int> {};

TEST_P(AfterItsOwner, TheProcessEndsToo) {
    const Owner owner;
    Reader reader(owner.Port);
    ASSERT_TRUE(reader.IsOpen()) << owner.Port;
    NextRecord(reader);
    owner.End(GetParam());
    int status = 0;
    pid_t orphan = 0;
    EXPECT_TRUE(Eventually([&] { return (orphan = ::waitpid(-1, &status, WNOHANG)) != 0; }));
    EXPECT_GT(orphan, 0) << "it came to us when its owner ended";
    EXPECT_TRUE(WIFSIGNALED(status));
}

INSTANTIATE_TEST_SUITE_P(Ends, AfterItsOwner, testing::Values(SIGKILL, SIGTERM, SIGSEGV, SIGUSR1));

TEST(DemoInstrument, StaysAtTheKeysThatEndAProgram) {
    ::setpgid(0, 0); // otherwise the caller of this test would get the signal, too
    ASSERT_EQ(::getpgrp(), ::getpid());
    const DemoInstrument meter(Short);
    Reader reader(meter.Port());
    NextRecord(reader);
    for (const int key : {SIGINT, SIGQUIT, SIGHUP}) {
        ::signal(key, SIG_IGN);
        ::kill(0, key); // the whole group, as a terminal does
    }
    NextRecord(reader);
    EXPECT_THAT(NextRecord(reader), HasSubstr("[CONNECT"));
}

} // namespace
} // namespace quorin
