// SPDX-License-Identifier: MIT
// One run of the program: reads commands, runs them, and reports the results.
#pragma once

#include "apps/quorin-console/writer.h"
#include "backends/loop/end_signals.h"
#include "backends/loop/ending.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace console {

/// Reads lines from a descriptor as they arrive. Lines end with LF or CR LF.
class LineReader {
public:
    explicit LineReader(int descriptor) : Input(descriptor) {}
    bool HasLine() const { return !Lines.empty(); }
    bool Ended() const { return AtEnd; }
    int Descriptor() const { return AtEnd ? -1 : Input; }
    void Read();
    std::string Take();

private:
    void Keep(std::string line);

    int Input;
    bool AtEnd = false;
    std::string Begun; ///< a line whose end has not arrived yet
    std::deque<std::string> Lines;
};

/// Ends the program when the output can't be written, because the results of commands can't be reported then.
class OutputWatch final : public backends::EventSource {
public:
    OutputWatch(const Writer& writer, backends::EventLoop& loop) : Out(writer), Loop(loop) {}
    int Descriptor() override { return -1; }
    bool RaiseWhatIsPending() override;

private:
    const Writer& Out;
    backends::EventLoop& Loop;
};

class Session final : public backends::CommandSource {
public:
    /// Reads commands from a descriptor. If `stopAtFailure`, the first command that fails is the last one.
    Session(int input, std::ostream& out, bool stopAtFailure) : strict(stopAtFailure), writer(out), reader(input) {}

    /// Sets the device for the commands. The device must have been created with this session as its source of commands
    /// and as its watcher.
    void Use(backends::BackEnd& used);
    /// From now on a signal ends the program; the record on the screen is saved as by Back.
    void EndBy(backends::EndSignals& signals);
    /// Starts the program and runs commands until the program is over.
    [[noreturn]] void Run();
    /// Reports that the program is over, closes the commands that are open, and returns the exit status.
    int Over(const backends::ProgramOver& over);

    Writer& Out() { return writer; }

    // Called by the loop.
    void AboutToWait(int nesting) override;
    bool HasCommand() override { return reader.HasLine(); }
    bool Ended() override { return reader.Ended(); }
    int Descriptor() override { return reader.Descriptor(); }
    void TakeInput() override { reader.Read(); }
    void RunCommand() override;

private:
    int Close(const backends::ProgramOver& over);
    void CloseOpenCommands(const std::string& error);

    bool strict;
    Writer writer;
    LineReader reader;
    backends::BackEnd* device = nullptr;
    std::optional<OutputWatch> outputWatch;
    std::optional<backends::Ending> ending;
    std::vector<std::string> openCommands; ///< their words, the innermost last
    int announced = -1;                    ///< the nesting of the last `ready` without a command after it; -1 for none
};

} // namespace console
