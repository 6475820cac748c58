// SPDX-License-Identifier: MIT
#include "tests/unit/apps/quorin-journal/journal_run.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace reader {
namespace {

/// `quorin-journal follow` as a child process.
class Follower : public Journal {
protected:
    ~Follower() override {
        if (Process_ > 0) {
            ::kill(Process_, SIGKILL);
            ::waitpid(Process_, nullptr, 0);
        }
    }
    void Begin(const Words& options = {}) {
        Words words = {QUORIN_JOURNAL, "follow", "--journal", Folder.Path()};
        words.insert(words.end(), options.begin(), options.end());
        const std::string output = Out_.Path("output");
        const std::string errors = Out_.Path("errors");
        std::vector<char*> arguments;
        for (std::string& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        Process_ = ::fork();
        if (Process_ == 0) {
            ::dup2(::open(output.c_str(), O_WRONLY | O_CREAT, 0600), STDOUT_FILENO);
            ::dup2(::open(errors.c_str(), O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
            ::execv(arguments[0], arguments.data());
            ::_exit(127);
        }
        Add("2026-11-22", Reading("2026-11-22T10:00:00", "taken", "first") + "\n");
        Wait("first");
    }
    void Add(const std::string& day, const std::string& bytes) {
        std::ofstream(FileOf(day), std::ios::binary | std::ios::app) << bytes;
    }
    std::string Output() { return Out_.Bytes("output"); }
    std::string Errors() { return Out_.Bytes("errors"); }
    /// Waits until the output has this text. Until a reading is seen, more may be needed: the child may not be there
    /// yet, and passes over what it finds.
    void Wait(const std::string& text) {
        for (int i = 0; i < 600 && (!Out_.Has("output") || Output().find(text) == std::string::npos); ++i) {
            if (text == "first" && i % 10 == 9)
                Add("2026-11-22", Reading("2026-11-22T10:00:00", "taken", "first") + "\n");
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        ASSERT_THAT(Output(), testing::HasSubstr(text));
    }
    int EndBy(int signal) {
        int status = 0;
        ::kill(Process_, signal);
        ::waitpid(Process_, &status, 0);
        Process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    TemporaryRoot Out_{support::PlaceInMemory()};
    pid_t Process_ = -1;
};

TEST_F(Follower, ShowsReadingsAsTheyCome) {
    Day("2026-11-22", {Start(), Reading("2026-11-22T09:00:00", "taken", "before")});
    Begin();
    const std::string line = Reading("2026-11-22T10:00:01", "norow", "2");
    Add("2026-11-22", line.substr(0, 50)); // the first part of a write
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    EXPECT_EQ(Output().find("10:00:01"), std::string::npos);
    Add("2026-11-22", line.substr(50) + "\n");
    Wait("2026-11-22 10:00:01  qrn0001.txt  Moisture 2 %          ○ refused: no row of qrn0001.txt asks for");
    EXPECT_EQ(Output().rfind("/data/meter:\n2026-11-22 10:00:00", 0), 0U) << Output();
    EXPECT_EQ(Output().find("before"), std::string::npos);
    EXPECT_EQ(Errors(), "");
    EXPECT_EQ(EndBy(SIGTERM), 0);
}

TEST_F(Follower, GoesOnWithTheNextDay) {
    Day("2026-11-22", {Start()});
    Begin({"--json"});
    const std::string next = Reading("2026-11-23T00:00:01", "taken", "next");
    Add("2026-11-23", R"({"event":"day","root":"/data/meter"})" + std::string("\n") + next + "\n");
    Wait(next + "\n");
    Add("2026-11-23", Reading("2026-11-23T00:00:02", "taken", "later") + "\n");
    Wait("later");
    EXPECT_EQ(EndBy(SIGINT), 0);
}

TEST_F(Follower, TellsLinesThatAreNoObjects) {
    Day("2026-11-22", {Start()});
    Begin({"--json"});
    Add("2026-11-22", "{\n" + Reading("2026-11-22T10:00:09", "taken", "last") + "\n");
    Wait("last");
    EXPECT_THAT(Errors(), testing::HasSubstr("no JSON object, left out"));
    EXPECT_EQ(EndBy(SIGHUP), 5);
}

} // namespace
} // namespace reader
