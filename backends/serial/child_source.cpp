// SPDX-License-Identifier: MIT
#include "backends/serial/child_source.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace backends {

namespace {

constexpr auto Grace = std::chrono::milliseconds(250);
constexpr int LastSignal = 64;
constexpr int StatusNotRun = 127;

/// Runs in the child. After the fork of a process with threads, nothing that takes a lock may be called here.
[[noreturn]] void RunCommand(const char* command, pid_t owner, int input, int output) {
    ::prctl(PR_SET_PDEATHSIG, SIGTERM); // sent to the child when the owner ends in any way
    if (::getppid() != owner)           // the owner ended before prctl
        ::_exit(StatusNotRun);
    // A session of its own: a key that ends the program does not reach the command, and the command can be ended with
    // everything that it has started.
    ::setsid();
    for (int number = 1; number <= LastSignal; ++number)
        std::signal(number, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::dup2(input, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
#ifndef __EMSCRIPTEN__ // which has no processes: fork() has failed there
    ::close_range(STDERR_FILENO + 1, ~0U, 0); // including the lock of the root folder
#endif
    ::execl("/bin/sh", "sh", "-c", command, nullptr);
    ::_exit(StatusNotRun);
}

bool MakePipe(Descriptor& reading, Descriptor& writing) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return false;
    reading = Descriptor(ends[0]);
    writing = Descriptor(ends[1]);
    return true;
}

/// True if the process has ended; it is not reaped yet.
bool HasEnded(pid_t process) {
    siginfo_t found{};
    const int outcome =
        Repeated([&] { return ::waitid(P_PID, static_cast<id_t>(process), &found, WEXITED | WNOHANG | WNOWAIT); });
    return outcome != 0 || found.si_pid == process;
}

bool EndsWithin(pid_t process, std::chrono::milliseconds time) {
    const auto until = std::chrono::steady_clock::now() + time;
    while (!HasEnded(process)) {
        if (std::chrono::steady_clock::now() >= until)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

/// Signals the whole session; only the process itself if it has not created its session yet.
void SignalAll(pid_t process, int number) {
    if (::kill(-process, number) != 0)
        ::kill(process, number);
}

std::string EndingText(int status) {
    if (WIFSIGNALED(status))
        return "the command was ended by signal " + std::to_string(WTERMSIG(status));
    return "the command has ended with status " + std::to_string(WEXITSTATUS(status));
}

} // namespace

SourceTrouble ChildSource::Open(const Text&) {
    Close();
    std::signal(SIGCHLD, SIG_DFL); // if it was inherited as ignored, waiting for a child would fail
    backends::Descriptor input;
    backends::Descriptor output;
    if (!MakePipe(input, Input_) || !MakePipe(Output_, output) || ::fcntl(Output_.Number(), F_SETFL, O_NONBLOCK) != 0) {
        const std::string why = ReasonOf(errno);
        Close();
        return {NotAvailable, why};
    }
    const pid_t owner = ::getpid();
    Process_ = ::fork();
    if (Process_ == 0)
        RunCommand(Command_.c_str(), owner, input.Number(), output.Number());
    if (Process_ < 0) {
        const std::string why = ReasonOf(errno);
        Close();
        return {NotAvailable, why};
    }
    return {};
}

void ChildSource::Close() {
    Input_.Close();
    Output_.Close();
    if (Process_ > 0) {
        SignalAll(Process_, SIGTERM);
        EndsWithin(Process_, Grace);
        Reap();
    }
    Ending_.clear();
}

/// Kills what the command has started and reaps the command.
void ChildSource::Reap() {
    SignalAll(Process_, SIGKILL);
    int status = 0;
    Repeated([&] { return ::waitpid(Process_, &status, 0); });
    Ending_ = EndingText(status);
    Process_ = -1;
}

/// The command may have ended and left its output open to a process that it has started: that counts as the end too.
/// The end is checked before the read, because then all that the command wrote is found by this read.
ReadState ChildSource::TakeAvailable(std::string& bytes) {
    if (!Output_.Valid())
        return ReadState::Gone;
    const bool ended = HasEnded(Process_);
    int error = 0;
    const ReadState state = ReadDescriptor(Output_.Number(), bytes, error);
    if (state == ReadState::Data || (state == ReadState::Nothing && !ended))
        return state;
    // A command that has closed its output is usually about to end, and its exit status says more than the message
    // here.
    constexpr auto Moment = std::chrono::milliseconds(50);
    if (!EndsWithin(Process_, Moment)) {
        Close();
        Ending_ = "the command has closed its output";
        return ReadState::Gone;
    }
    Input_.Close();
    Output_.Close();
    Reap();
    return ReadState::Gone;
}

} // namespace backends
