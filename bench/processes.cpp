// SPDX-License-Identifier: MIT
#include "bench/processes.h"

#include "bench/ratio.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace bench {

namespace {

/// The child's ends of the pipes; -1 for /dev/null in the place of a standard stream.
struct Ends {
    int Input = -1;
    int Output = -1;
};

void Take(posix_spawn_file_actions_t& actions, int end, int standard, int flags) {
    if (end >= 0)
        ::posix_spawn_file_actions_adddup2(&actions, end, standard);
    else
        ::posix_spawn_file_actions_addopen(&actions, standard, "/dev/null", flags, 0);
}

pid_t Spawn(const std::vector<std::string>& words, const Ends& ends) {
    ::setenv("LC_ALL", "C", 1);
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    Take(actions, ends.Input, STDIN_FILENO, O_RDONLY);
    Take(actions, ends.Output, STDOUT_FILENO, O_WRONLY);
    pid_t process = -1;
    const int error = ::posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        Fail("can't start " + words[0]);
    return process;
}

int WaitFor(pid_t process) {
    int status = 0;
    if (::waitpid(process, &status, 0) != process)
        Fail("lost a process");
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128;
}

std::array<int, 2> Pipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        Fail("no pipe");
    return ends;
}

} // namespace

Child Start(const std::vector<std::string>& words) {
    const std::array<int, 2> input = Pipe();
    const std::array<int, 2> output = Pipe();
    Child child;
    child.Process = Spawn(words, {input[0], output[1]});
    ::close(input[0]);
    ::close(output[1]);
    child.Input = input[1];
    child.Output = output[0];
    return child;
}

void Tell(const Child& child, const std::string& text) {
    if (::write(child.Input, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        Fail("a process does not listen");
}

std::string ReadLine(const Child& child) {
    std::string line;
    char character = 0;
    while (::read(child.Output, &character, 1) == 1) {
        line += character;
        if (character == '\n')
            break;
    }
    return line;
}

int Finish(Child& child) {
    ::close(child.Input);
    std::array<char, 4096> rest;
    while (::read(child.Output, rest.data(), rest.size()) > 0)
        continue;
    ::close(child.Output);
    return WaitFor(child.Process);
}

double SecondsOf(const std::vector<std::string>& words) {
    const double start = Now();
    const int status = WaitFor(Spawn(words, {}));
    const double taken = Now() - start;
    if (status != 0)
        Fail(words[0] + " has failed");
    return taken;
}

std::string OutputOf(const std::vector<std::string>& words) {
    Child child = Start(words);
    std::string text;
    for (std::string line = ReadLine(child); !line.empty(); line = ReadLine(child))
        text += line;
    if (Finish(child) != 0)
        Fail(words[0] + " has failed");
    return text;
}

std::string Beside(const std::string& program) {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / program;
}

} // namespace bench
