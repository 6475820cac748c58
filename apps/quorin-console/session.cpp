// SPDX-License-Identifier: MIT
#include "apps/quorin-console/session.h"

#include "apps/quorin-console/script_commands.h"
#include "apps/start/exit_status.h"

#include <array>
#include <cerrno>
#include <iostream>
#include <unistd.h>

namespace console {

using backends::ProgramOver;

void LineReader::Read() {
    std::array<char, 65536> block;
    const ssize_t count = ::read(Input, block.data(), block.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (count <= 0) {
        AtEnd = true;
        if (!Begun.empty())
            Keep(std::move(Begun));
        return;
    }
    for (ssize_t i = 0; i < count; ++i) {
        const char character = block[static_cast<std::size_t>(i)];
        if (character != '\n') {
            Begun += character;
            continue;
        }
        Keep(std::move(Begun));
        Begun.clear();
    }
}

void LineReader::Keep(std::string line) {
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    if (line.find_first_not_of(" \t") != std::string::npos && line[0] != '#')
        Lines.push_back(std::move(line));
}

std::string LineReader::Take() {
    std::string line = std::move(Lines.front());
    Lines.pop_front();
    return line;
}

bool OutputWatch::RaiseWhatIsPending() {
    if (Out.Failed())
        Loop.Leave({ProgramOver::Reason::InputEnded, {}}); // later commands could not be answered
    return false;
}

void Session::Use(backends::BackEnd& used) {
    device = &used;
    outputWatch.emplace(writer, used.loop);
    used.loop.Listen(*outputWatch);
    ending.emplace(used);
}

void Session::EndBy(backends::EndSignals& signals) {
    signals.Raised = [this](const std::string& name) { ending->Begin(name); };
    device->loop.Listen(signals);
}

void Session::Run() {
    device->StartProgram();
    for (;;)
        device->loop.WaitOnce();
}

void Session::AboutToWait(int nesting) {
    if (announced == nesting)
        return;
    writer.Write({{"ready", nesting}});
    announced = nesting;
}

void Session::RunCommand() {
    announced = -1;
    const CommandLine line = Parse(reader.Take());
    openCommands.push_back(line.Word);
    std::string error = Execute({*device, writer}, line);
    device->loop.HandleDue();
    openCommands.pop_back();
    Json done = {{"done", line.Word}};
    if (!error.empty())
        done["error"] = error;
    writer.Write(done);
    if (strict && !error.empty())
        device->loop.Leave({ProgramOver::Reason::CommandFailed, {}});
}

/// Writes the closing object of each command that is still open when the program ends.
void Session::CloseOpenCommands(const std::string& error) {
    for (auto word = openCommands.rbegin(); word != openCommands.rend(); ++word) {
        Json done = {{"done", *word}};
        if (!error.empty())
            done["error"] = error;
        writer.Write(done);
    }
    openCommands.clear();
}

int Session::Over(const ProgramOver& over) {
    const int status = Close(over);
    if (!ending->Begun()) {
        const std::string unsaved = backends::UnsavedRecordWords();
        if (!unsaved.empty())
            std::cerr << "quorin-console: " << unsaved << std::endl;
        return status;
    }
    std::cerr << "quorin-console: " << ending->Words() << std::endl;
    return ending->IsLost() ? start::StatusFailure : status;
}

int Session::Close(const ProgramOver& over) {
    switch (over.Why) {
    case ProgramOver::Reason::Ended:
        writer.Write({{"event", "end"}});
        CloseOpenCommands("");
        return start::StatusEnded;
    case ProgramOver::Reason::Failed:
        writer.Write({{"event", "failure"}, {"text", Utf8(over.Failure)}});
        std::cerr << "quorin-console: " << Utf8(over.Failure) << std::endl;
        CloseOpenCommands("the program has ended");
        return start::StatusFailure;
    case ProgramOver::Reason::CommandFailed:
        CloseOpenCommands("a command inside it has failed");
        return start::StatusStrict;
    case ProgramOver::Reason::InputEnded:
        CloseOpenCommands(""); // which is not an error
        break;
    }
    return start::StatusEnded;
}

} // namespace console
