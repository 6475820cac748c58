// SPDX-License-Identifier: MIT
// One run of the program: reads commands, runs them, and reports the results.
#pragma once

#include "apps/quorin-console/station.h"
#include "apps/quorin-console/writer.h"
#include "apps/start/exit_status.h"
#include "backends/host/end_signals.h"
#include "backends/host/host_back_end.h"
#include "backends/host/journal.h"
#include "backends/input/hand.h"
#include "backends/loop/ending.h"
#include "companion/readings.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace console {

/// Reads lines from a descriptor as they arrive. Lines end with LF or CR LF.
class LineReader {
public:
    explicit LineReader(int descriptor) : Input_(descriptor) {}
    bool HasLine() const { return !Lines_.empty(); }
    bool Ended() const { return AtEnd_; }
    int Descriptor() const { return AtEnd_ ? -1 : Input_; }
    /// Takes what has arrived, without waiting for more.
    void Read();
    std::string Take();

private:
    void Keep(std::string line);

    int Input_;
    bool AtEnd_ = false;
    std::string Begun_; ///< a line whose end has not arrived yet
    std::deque<std::string> Lines_;
};

/// Ends the program when the output can't be written, because the results of commands can't be reported then.
class OutputWatch final : public backends::EventSource {
public:
    OutputWatch(const Writer& writer, backends::EventLoop& loop) : Out_(writer), Loop_(loop) {}
    bool RaiseWhatIsPending() override;

private:
    const Writer& Out_;
    backends::EventLoop& Loop_;
};

class Session final : public backends::CommandSource, public backends::Waitable {
public:
    /// Reads commands from a descriptor. If `stopAtFailure`, the first command that fails is the last one.
    Session(int input, std::ostream& out, bool stopAtFailure, OutputFor reader = OutputFor::Programs)
        : Strict_(stopAtFailure), Writer_(out, reader), Reader_(input) {}

    /// Sets the device for the commands, and who operates it. The device must have been created with this session as
    /// its source of commands and as its watcher.
    void Use(backends::HostBackEnd& used, backends::Hand& user);
    /// From now on a signal ends the program; the record on the screen is saved as by Back.
    void EndBy(backends::EndSignals& signals);
    /// Starts the program and runs commands until the program is over.
    [[noreturn]] void Run();
    /// Reports that the program is over, closes the commands that are open, and returns the exit status.
    start::ExitStatus Over(const backends::ProgramOver& over);

    /// Why nothing keeps a second program away from the root folder; empty if the folder is locked. Set before Use().
    std::string LockWarning;
    /// Whether readings and saved records are reported. Set before Use().
    bool Verdicts = false;

    /// What to collect without a person; nothing if commands alone say what is done. Set before Use().
    std::optional<StationPlan> StationToRun;

    /// How to keep a journal; none if none is kept. Set before Use().
    std::optional<backends::JournalPlan> JournalToKeep;
    backends::ProgramName Program;
    /// Ends the journal. Must be called while the device exists; Over() does.
    void EndJournal(const backends::ProgramOver& over);

    Writer& Out() { return Writer_; }

    // Called by the loop.
    void AboutToWait(int nesting) override;
    bool HasCommand() override { return Reader_.HasLine() || !OwnAnswer().empty(); }
    bool Ended() override;
    void TakeInput() override { Reader_.Read(); }
    void RunCommand() override;

    int Descriptor() const override { return Reader_.Descriptor(); }

private:
    std::string OwnAnswer() const;
    start::ExitStatus Close(const backends::ProgramOver& over);
    void CloseOpenCommands(const std::string& error);

    bool Strict_;
    Writer Writer_;
    companion::KeptReadings Readings_;
    LineReader Reader_;
    backends::HostBackEnd* Device_ = nullptr;
    backends::Hand* User_ = nullptr;
    std::optional<backends::Journal> Journal_;
    std::optional<OutputWatch> OutputWatch_;
    std::optional<backends::Ending> Ending_;
    std::optional<Station> Station_;
    std::vector<std::string> OpenCommands_; ///< their words, the innermost last
    int Announced_ = -1;                    ///< the nesting of the last `ready` without a command after it; -1 for none
};

} // namespace console
