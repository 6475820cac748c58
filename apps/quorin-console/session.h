// SPDX-License-Identifier: MIT
// One run of the program under commands: reads them, runs them, and says what comes of them.
#pragma once

#include "options.h"
#include "platform/headless/headless_platform.h"
#include "writer.h"

#include <deque>
#include <string>
#include <vector>

namespace console {

/// Exit statuses of the program.
inline constexpr int StatusEnded = 0;
inline constexpr int StatusFailure = 1;
inline constexpr int StatusUsage = 2;
inline constexpr int StatusStrict = 3;

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

class Session final : public platform::headless::CommandSource {
public:
    Session(const Options& options, int input, std::ostream& out);

    /// Starts the program and runs all commands. Gives the exit status.
    int Run();

    platform::headless::HeadlessPlatform& Device() { return device; }
    Writer& Out() { return writer; }

    // The loop's view of the commands.
    void AboutToWait(int nesting) override;
    bool HasCommand() override { return reader.HasLine(); }
    bool Ended() override { return reader.Ended(); }
    int Descriptor() override { return reader.Descriptor(); }
    void TakeInput() override { reader.Read(); }
    void RunCommand() override;

private:
    void CloseOpenCommands(const std::string& error);
    int Over(const platform::headless::ProgramOver& over);

    bool strict;
    Writer writer;
    LineReader reader;
    platform::headless::HeadlessPlatform device;
    std::vector<std::string> openCommands; ///< their words, the innermost last
    int announced = -1; ///< the nesting of the last `ready` that no command has followed yet; -1 for none
};

} // namespace console
