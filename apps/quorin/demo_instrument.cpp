// SPDX-License-Identifier: MIT
#include "apps/quorin/demo_instrument.h"

#include "apps/quorin-instrument/player.h"
#include "apps/quorin-instrument/terminal_outlet.h"
#include "apps/quorin-instrument/waiting.h"
#include "backends/descriptor/descriptor.h"
#include "backends/files/host_files.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorin {

namespace {

using instrument::RecordSource;

/// Returns an endless source of results, each with an introduction before it. With a single introduction, a listener
/// that closes its port in the middle of it would refuse every result from then on.
RecordSource IntroducedResults() {
    instrument::MadeUpStream stream;
    stream.Kinds = instrument::ClimateKinds();
    const RecordSource made = instrument::MakeUp(stream);
    std::string introduction;
    made(introduction);
    return [made, introduction, due = false](std::string& record) mutable {
        due = !due;
        record = introduction;
        return due || made(record);
    };
}

/// The terminal keys that end a program are meant for the window only, which may have something to save.
void LeaveSignalsToTheOwner() {
    for (const int number : {SIGINT, SIGQUIT, SIGHUP, SIGPIPE})
        std::signal(number, SIG_IGN);
}

/// Runs in the child: writes the path of its terminal, or the reason why there is none, as one line to `answer`.
[[noreturn]] void RunInstrument(std::chrono::milliseconds interval, pid_t owner, backends::Descriptor& answer) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != owner) // the owner ended before the line above took effect
        ::_exit(1);
    LeaveSignalsToTheOwner();
    ::dup2(answer.Number(), STDOUT_FILENO);
    instrument::PseudoTerminal line("");
    if (line.Open() != instrument::Outcome::Done) {
        std::puts(line.Problem().c_str());
        std::fflush(stdout);
        ::_exit(1);
    }
    ::dup2(::open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO); // ends the answer
    answer.Close();
    instrument::PlayOptions options;
    options.Interval = interval;
    instrument::Play(IntroducedResults(), options, line, instrument::PauseFor);
    ::_exit(1);
}

std::string FirstLine(int descriptor) {
    std::string line;
    for (char byte = 0; byte != '\n';) {
        const auto got = ::read(descriptor, &byte, 1);
        if (got == 0 || (got < 0 && errno != EINTR))
            break;
        if (got == 1 && byte != '\n')
            line += byte;
    }
    return line;
}

} // namespace

DemoInstrument::DemoInstrument(std::chrono::milliseconds interval) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        ProblemText_ = backends::ReasonOf(errno);
        return;
    }
    const backends::Descriptor answer(ends[0]);
    backends::Descriptor answering(ends[1]);
    std::fflush(nullptr); // otherwise the child would write buffered output again
    const pid_t owner = ::getpid();
    Process_ = ::fork();
    if (Process_ == 0)
        RunInstrument(interval, owner, answering);
    if (Process_ < 0) {
        ProblemText_ = backends::ReasonOf(errno);
        return;
    }
    answering.Close();
    TakeAnswer(FirstLine(answer.Number()));
}

DemoInstrument::~DemoInstrument() {
    if (Process_ <= 0)
        return;
    ::kill(Process_, SIGKILL);
    while (::waitpid(Process_, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void DemoInstrument::TakeAnswer(const std::string& line) {
    if (!line.empty() && line.front() == '/')
        PortPath_ = line;
    else
        ProblemText_ = line.empty() ? "it ended immediately" : line;
}

} // namespace quorin
