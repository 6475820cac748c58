// SPDX-License-Identifier: MIT
// quorin-console as a child process that is told one command at a time.
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

    /// Tells a command and gives what is answered up to the next time that the program is ready.
    std::string Tell(const std::string& command);
    /// Ends the input and waits; the exit status, or -1 for a signal's end.
    int End();
    int Id() const { return Process_; }

private:
    std::string ReadUntilReady();

    int Process_ = -1;
    std::FILE* Commands_ = nullptr;
    std::FILE* Answers_ = nullptr;
};

} // namespace live
