// SPDX-License-Identifier: MIT
#include "tests/support/running_console.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace live {

RunningConsole::RunningConsole(const std::vector<std::string>& arguments, const char* program) {
    std::signal(SIGPIPE, SIG_IGN);
    int in[2];
    int out[2];
    // Other children must not inherit the pipes: the input ends only when all its writers are closed.
    if (::pipe2(in, O_CLOEXEC) != 0 || ::pipe2(out, O_CLOEXEC) != 0)
        std::abort();
    Process_ = ::fork();
    if (Process_ == 0) {
        ::dup2(in[0], STDIN_FILENO);
        ::dup2(out[1], STDOUT_FILENO);
        std::vector<char*> words = {const_cast<char*>(program)};
        for (const std::string& argument : arguments)
            words.push_back(const_cast<char*>(argument.c_str()));
        words.push_back(nullptr);
        ::execv(program, words.data());
        ::_exit(127);
    }
    ::close(in[0]);
    ::close(out[1]);
    Commands_ = ::fdopen(in[1], "w");
    Answers_ = ::fdopen(out[0], "r");
    Greeting_ = ReadUntilReady();
}

RunningConsole::~RunningConsole() {
    End();
    std::fclose(Answers_);
}

std::string RunningConsole::Tell(const std::string& command) {
    std::fprintf(Commands_, "%s\n", command.c_str());
    std::fflush(Commands_);
    return ReadUntilReady();
}

std::string RunningConsole::ReadUntilReady() {
    std::string answers;
    char* line = nullptr;
    std::size_t room = 0;
    while (::getline(&line, &room, Answers_) > 0) {
        const std::string answer = line;
        if (answer.rfind("{\"ready\":", 0) == 0)
            break;
        answers += answer;
    }
    std::free(line);
    return answers;
}

int RunningConsole::End() {
    if (Process_ < 0)
        return -1;
    std::fclose(Commands_);
    int status = 0;
    ::waitpid(Process_, &status, 0);
    Process_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace live
