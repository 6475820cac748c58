// SPDX-License-Identifier: MIT
// quorin-console as a child process that is given one command at a time.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace live {

class RunningConsole {
public:
    explicit RunningConsole(const std::vector<std::string>& arguments, const char* program = QUORIN_CONSOLE);
    RunningConsole(const RunningConsole&) = delete;
    RunningConsole& operator=(const RunningConsole&) = delete;
    ~RunningConsole();

    /// Sends a command. Returns the output up to the time when the program is ready again.
    std::string Tell(const std::string& command);
    /// Ends the input and waits. Returns the exit status, or -1 if a signal ended the program.
    int End();
    int Id() const { return Process_; }
    /// The output before the program was ready for the first command.
    const std::string& Greeting() const { return Greeting_; }

private:
    std::string ReadUntilReady();

    int Process_ = -1;
    std::string Greeting_;
    std::FILE* Commands_ = nullptr;
    std::FILE* Answers_ = nullptr;
};

} // namespace live
