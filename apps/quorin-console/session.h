// SPDX-License-Identifier: MIT
// One run of the program under commands: reads them, runs them, and says what comes of them.
#pragma once

#include "apps/quorin-console/writer.h"
#include "backends/loop/end_signals.h"
#include "backends/loop/ending.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace console {

/// Lines from a descriptor, as they come. Line ends are LF or CR LF.
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
    std::string Begun; ///< a line whose end has not come yet
    std::deque<std::string> Lines;
};

/// Ends the program once nobody can be told any more what comes of the commands.
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
    /// Reads commands from a descriptor. The first one that fails may be made the last.
    Session(int input, std::ostream& out, bool stopAtFailure) : strict(stopAtFailure), writer(out), reader(input) {}

    /// The device that the commands are for; it is made with this session as its source of commands and its watcher.
    void Use(backends::BackEnd& used);
    /// A signal ends the program as on the way back from the record on the screen.
    void EndBy(backends::EndSignals& signals);
    /// Starts the program and runs commands until the device leaves it.
    [[noreturn]] void Run();
    /// The program is over: says so, closes the commands that are open, and gives the exit status.
    int Over(const backends::ProgramOver& over);

    Writer& Out() { return writer; }

    // The loop's view of the commands.
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
    int announced = -1; ///< the nesting of the last `ready` that no command has followed yet; -1 for none
};

} // namespace console
