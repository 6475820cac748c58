// SPDX-License-Identifier: MIT
#include "apps/quorin-console/session.h"

#include "apps/quorin-console/script_commands.h"
#include "companion/words.h"

#include <array>
#include <cerrno>
#include <iostream>
#include <poll.h>
#include <unistd.h>

namespace console {

using backends::ProgramOver;
using start::ExitStatus;

namespace {

bool CanBeRead(int descriptor) {
    pollfd waiting{descriptor, POLLIN, 0};
    return ::poll(&waiting, 1, 0) > 0;
}

} // namespace

void LineReader::Read() {
    if (AtEnd_ || !CanBeRead(Input_))
        return;
    std::array<char, 65536> block;
    const ssize_t count = ::read(Input_, block.data(), block.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (count <= 0) {
        AtEnd_ = true;
        if (!Begun_.empty())
            Keep(std::move(Begun_));
        return;
    }
    for (ssize_t i = 0; i < count; ++i) {
        const char character = block[static_cast<std::size_t>(i)];
        if (character != '\n') {
            Begun_ += character;
            continue;
        }
        Keep(std::move(Begun_));
        Begun_.clear();
    }
}

void LineReader::Keep(std::string line) {
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    if (line.find_first_not_of(" \t") != std::string::npos && line[0] != '#')
        Lines_.push_back(std::move(line));
}

std::string LineReader::Take() {
    std::string line = std::move(Lines_.front());
    Lines_.pop_front();
    return line;
}

bool OutputWatch::RaiseWhatIsPending() {
    if (Out_.Failed())
        Loop_.Leave({ProgramOver::Reason::InputEnded, {}}); // later commands could not be answered
    return false;
}

void Session::Use(backends::HostBackEnd& used, backends::Hand& user) {
    Device_ = &used;
    User_ = &user;
    OutputWatch_.emplace(Writer_, used.loop);
    used.loop.Listen(*OutputWatch_);
    used.pump.WakenByCommands(*this);
    Ending_.emplace(used);
    if (JournalToKeep)
        Journal_.emplace(*JournalToKeep, Program, used);
    used.readings.Add(Readings_);
    Writer_.Use(used.onlooker.limits);
    if (StationToRun) // before the events of its readings
        Station_.emplace(*StationToRun, used, *Ending_, Writer_);
    if (Verdicts)
        used.readings.Add(Writer_);
    if (!LockWarning.empty())
        used.onlooker.notices.Raise(companion::NobodyKeepsAway(modStringTools::FromBytes(LockWarning)));
}

/// A station goes on without commands. With a virtual clock nothing more would happen to it.
bool Session::Ended() {
    return Reader_.Ended() && (!Station_ || Device_->clock.IsVirtual());
}

void Session::EndJournal(const ProgramOver& over) {
    if (Journal_)
        Journal_->End(over, Ending_ ? Ending_->Reason() : std::string());
    Journal_.reset();
}

void Session::EndBy(backends::EndSignals& signals) {
    signals.Raised = [this](const std::string& name) { Ending_->Begin(name); };
    Device_->Listen(signals);
}

void Session::Run() {
    Device_->StartProgram();
    if (Station_)
        Station_->Begin();
    for (;;)
        Device_->loop.WaitOnce();
}

void Session::AboutToWait(int nesting) {
    if (Announced_ == nesting || !OwnAnswer().empty()) // no one is asked for that command
        return;
    Writer_.Write({{"ready", nesting}});
    Announced_ = nesting;
}

/// Returns the command that answers a box which has opened while `collect` waits, or by itself while nobody is there;
/// an empty text if there is none.
std::string Session::OwnAnswer() const {
    const auto* box = Device_->Seen().boxes.Current();
    const bool isCollecting = !OpenCommands_.empty() && OpenCommands_.back() == "collect";
    const bool isAlone = Station_ && (OpenCommands_.empty() || OpenCommands_.back() == "tick" || Reader_.Ended());
    if (box == nullptr || !(isCollecting || isAlone))
        return {};
    return box->Buttons == platform::BoxButtons::Ok ? "answer ok" : isAlone ? "answer no" : "answer yes";
}

void Session::RunCommand() {
    Announced_ = -1;
    const std::string answer = OwnAnswer();
    const CommandLine line = Parse(answer.empty() ? Reader_.Take() : answer);
    OpenCommands_.push_back(line.Word);
    std::string error = Execute({*Device_, *User_, Writer_, Readings_}, line);
    Device_->loop.HandleDue();
    OpenCommands_.pop_back();
    Json done = {{"done", line.Word}};
    if (!error.empty())
        done["error"] = error;
    Writer_.Write(done);
    if (Strict_ && !error.empty())
        Device_->loop.Leave({ProgramOver::Reason::CommandFailed, {}});
}

/// Writes the closing object of each command that is still open when the program ends.
void Session::CloseOpenCommands(const std::string& error) {
    for (auto word = OpenCommands_.rbegin(); word != OpenCommands_.rend(); ++word) {
        Json done = {{"done", *word}};
        if (!error.empty())
            done["error"] = error;
        Writer_.Write(done);
    }
    OpenCommands_.clear();
}

ExitStatus Session::Over(const ProgramOver& over) {
    EndJournal(over);
    ExitStatus status = Close(over);
    const bool hasNotBegun = Station_ && !Station_->HasBegun();
    if (hasNotBegun && over.Why == ProgramOver::Reason::Failed) // the next start would find the same
        status = ExitStatus::NotStarted;
    if (!Ending_->Begun()) {
        const std::string unsaved = backends::UnsavedRecordWords();
        if (!unsaved.empty())
            std::cerr << "quorin-console: " << unsaved << std::endl;
        return status;
    }
    std::cerr << "quorin-console: " << Ending_->Words() << std::endl;
    if (Station_ && Station_->Status())
        return *Station_->Status();
    if (Station_ && Ending_->IsLost())
        return ExitStatus::CantStore;
    return Ending_->IsLost() ? ExitStatus::Failure : status;
}

ExitStatus Session::Close(const ProgramOver& over) {
    switch (over.Why) {
    case ProgramOver::Reason::Ended:
        Writer_.Write({{"event", "end"}});
        CloseOpenCommands("");
        return ExitStatus::Ended;
    case ProgramOver::Reason::Failed:
        Writer_.Write({{"event", "failure"}, {"text", Utf8(over.Failure)}});
        std::cerr << "quorin-console: " << Utf8(over.Failure) << std::endl;
        CloseOpenCommands("the program has ended");
        return ExitStatus::Failure;
    case ProgramOver::Reason::CommandFailed:
        CloseOpenCommands("a command inside it has failed");
        return ExitStatus::Strict;
    case ProgramOver::Reason::InputEnded:
        CloseOpenCommands(""); // which is not an error
        break;
    }
    return ExitStatus::Ended;
}

} // namespace console
