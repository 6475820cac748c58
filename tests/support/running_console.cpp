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
    // Not for other children: the end of the input must be this one's to give.
    if (::pipe2(in, O_CLOEXEC) != 0 || ::pipe2(out, O_CLOEXEC) != 0)
        std::abort();
    Process = ::fork();
    if (Process == 0) {
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
    Commands = ::fdopen(in[1], "w");
    Answers = ::fdopen(out[0], "r");
    ReadUntilReady();
}

RunningConsole::~RunningConsole() {
    End();
    std::fclose(Answers);
}

std::string RunningConsole::Tell(const std::string& command) {
    std::fprintf(Commands, "%s\n", command.c_str());
    std::fflush(Commands);
    return ReadUntilReady();
}

std::string RunningConsole::ReadUntilReady() {
    std::string answers;
    char* line = nullptr;
    std::size_t room = 0;
    while (::getline(&line, &room, Answers) > 0) {
        const std::string answer = line;
        if (answer.rfind("{\"ready\":", 0) == 0)
            break;
        answers += answer;
    }
    std::free(line);
    return answers;
}

int RunningConsole::End() {
    if (Process < 0)
        return -1;
    std::fclose(Commands);
    int status = 0;
    ::waitpid(Process, &status, 0);
    Process = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace live
