// SPDX-License-Identifier: MIT
#include "tests/support/running_instrument.h"

#include "tests/support/places.h"
#include "tests/unit/apps/quorin-instrument/instrument_support.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace instrument {

bool Eventually(const std::function<bool()>& holds) {
    const auto end = std::chrono::steady_clock::now() + Patience;
    while (!holds()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

TemporaryFolder::TemporaryFolder() {
    std::string path = (support::PlaceInMemory() / "quorin-instrument-XXXXXX").string();
    Folder_ = mkdtemp(path.data()) == nullptr ? std::string() : path;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(Folder_, ignored);
}

bool Exists(const std::string& path) {
    return access(path.c_str(), F_OK) == 0;
}

void WriteFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

RunningInstrument::RunningInstrument(const std::vector<std::string>& arguments) {
    std::vector<char*> words;
    std::string program = QUORIN_INSTRUMENT;
    words.push_back(program.data());
    for (const std::string& argument : arguments) {
        words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    const std::string output = Folder_.Path("output");
    const std::string errors = Folder_.Path("errors");
    Process_ = fork();
    if (Process_ == 0) {
        dup2(open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
        dup2(open(errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
        execv(words[0], words.data());
        _exit(127);
    }
}

RunningInstrument::~RunningInstrument() {
    Signal(SIGTERM);
    ExitStatus();
    if (Process_ > 0) {
        ADD_FAILURE() << "the instrument does not end";
        kill(Process_, SIGKILL);
        waitpid(Process_, nullptr, 0);
    }
}

std::string RunningInstrument::FirstLine() {
    Eventually([this] { return Output().find('\n') != std::string::npos; });
    const std::string output = Output();
    return output.substr(0, output.find('\n'));
}

std::string RunningInstrument::Output() const {
    return FileBytes(Folder_.Path("output"));
}

std::string RunningInstrument::Errors() const {
    return FileBytes(Folder_.Path("errors"));
}

void RunningInstrument::Signal(int number) const {
    if (Process_ > 0) {
        kill(Process_, number);
    }
}

int RunningInstrument::ExitStatus() {
    if (Process_ > 0) {
        int ended = 0;
        if (Eventually([&] { return waitpid(Process_, &ended, WNOHANG) == Process_; })) {
            Process_ = -1;
            Status_ = WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
        }
    }
    return Status_;
}

Reader::Reader(const std::string& path) {
    Line_ = backends::Descriptor(open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
}

std::string Reader::Read(std::size_t count) {
    std::string bytes;
    std::array<char, 64> part;
    while (bytes.size() < count) {
        pollfd line = {Line_.Number(), POLLIN, 0};
        if (poll(&line, 1, static_cast<int>(std::chrono::milliseconds(Patience).count())) <= 0) {
            break;
        }
        const auto got = read(Line_.Number(), part.data(), std::min(part.size(), count - bytes.size()));
        if (got <= 0) {
            break;
        }
        bytes.append(part.data(), static_cast<std::size_t>(got));
    }
    return bytes;
}

std::string Reader::ReadWhatIsThere() {
    std::string bytes;
    std::array<char, 4096> part;
    for (ssize_t got = 0; (got = read(Line_.Number(), part.data(), part.size())) > 0;) {
        bytes.append(part.data(), static_cast<std::size_t>(got));
    }
    return bytes;
}

} // namespace instrument
