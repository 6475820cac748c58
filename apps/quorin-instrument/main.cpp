// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/ask.h"
#include "apps/quorin-instrument/instrument_options.h"
#include "apps/quorin-instrument/mailbox_outlet.h"
#include "apps/quorin-instrument/printer.h"
#include "apps/quorin-instrument/serial_outlet.h"
#include "apps/quorin-instrument/terminal_outlet.h"
#include "apps/quorin-instrument/times.h"
#include "apps/quorin-instrument/waiting.h"
#include "apps/start/process.h"

#include <array>
#include <fstream>
#include <iostream>
#include <memory>
#include <unistd.h>

using namespace instrument;

namespace {

bool ReadFile(const std::string& path, std::string& bytes) {
    std::ifstream file(path, std::ios::binary);
    std::array<char, 4096> part;
    while (file.read(part.data(), part.size()) || file.gcount() > 0) {
        bytes.append(part.data(), static_cast<std::size_t>(file.gcount()));
    }
    return file.is_open() && !file.bad();
}

std::unique_ptr<Outlet> MakeOutlet(const CommandLine& line) {
    if (line.Print) {
        return std::make_unique<Printer>();
    }
    if (!line.Mailbox.empty()) {
        return std::make_unique<Mailbox>(line.Mailbox);
    }
    if (!line.Device.empty()) {
        return std::make_unique<SerialDevice>(line.Device);
    }
    return std::make_unique<PseudoTerminal>(line.Link);
}

/// How long the line stays after the last order, so that a reader gets what was sent.
constexpr auto StayAfterOrders = std::chrono::milliseconds(500);

Outcome AskOn(CommandLine& line, Outlet& outlet) {
    line.Stay = line.Stay.value_or(StayAfterOrders);
    MadeToOrder results(line.MadeUp);
    return Ask(results, line.Play, outlet, STDIN_FILENO, std::cerr);
}

int Failure(const std::string& problem) {
    std::cerr << "quorin-instrument: " << problem << '\n';
    return NumberOf(start::ExitStatus::Failure);
}

} // namespace

int main(int argc, char** argv) {
    start::PrepareProcess("quorin-instrument");
    CommandLine line;
    auto exitStatus = start::ExitStatus::Ended;
    if (!ReadCommandLine(argc, argv, line, exitStatus)) {
        return NumberOf(start::StatusAfterOutput("quorin-instrument", exitStatus));
    }
    RecordSource source = MakeUp(line.MadeUp);
    std::vector<TimedPiece> timed;
    if (!line.StreamFile.empty()) {
        std::string bytes;
        if (!ReadFile(line.StreamFile, bytes)) {
            return Failure("can't read the recording " + line.StreamFile);
        }
        const std::string wrong = line.Times ? ReadTimes(bytes, timed) : std::string();
        if (!wrong.empty()) {
            return Failure("can't play " + line.StreamFile + " with times: " + wrong);
        }
        source = Recording(bytes);
    }
    CatchStopSignals();
    const auto outlet = MakeOutlet(line);
    Outcome outcome = outlet->Open();
    if (outcome == Outcome::Done) {
        outcome = line.Ask     ? AskOn(line, *outlet)
                  : line.Times ? PlayTimes(timed, *line.Times, *outlet, PauseFor)
                               : Play(source, line.Play, *outlet, PauseFor);
    }
    if (outcome == Outcome::Done) {
        if (!line.Print && !line.Ask) {
            std::cerr << "played" << std::endl;
        }
        outcome = outlet->Finish(line.Stay);
    }
    return outcome == Outcome::Failed ? Failure(outlet->Problem()) : NumberOf(start::ExitStatus::Ended);
}
