// SPDX-License-Identifier: MIT
#include "apps/quorin-export/converter.h"

#include "backends/descriptor/descriptor.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace exporter {

namespace {

constexpr const char* Program = "rsvg-convert";

/// A file without a name: unlike a pipe it takes all that is written, so nobody waits for the other.
using NamelessFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

NamelessFile NewFile() {
    return {std::tmpfile(), std::fclose};
}

/// Returns the errno of the failure, 0 if the program was started.
int Start(const std::string& format, std::FILE* input, std::FILE* output, pid_t& process) {
    posix_spawn_file_actions_t streams;
    posix_spawn_file_actions_init(&streams);
    posix_spawn_file_actions_adddup2(&streams, ::fileno(input), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&streams, ::fileno(output), STDOUT_FILENO);
    std::string program = Program, option = "--format=" + format;
    const std::array<char*, 3> words = {program.data(), option.data(), nullptr};
    const int error = ::posix_spawnp(&process, Program, &streams, nullptr, words.data(), environ);
    posix_spawn_file_actions_destroy(&streams);
    return error;
}

std::string BytesOf(std::FILE* file) {
    std::string bytes;
    std::array<char, 1 << 16> part{};
    std::rewind(file);
    for (std::size_t count = 0; (count = std::fread(part.data(), 1, part.size(), file)) > 0;)
        bytes.append(part.data(), count);
    return bytes;
}

} // namespace

Converted Convert(const std::string& svg, const std::string& format) {
    const NamelessFile input = NewFile(), output = NewFile();
    const bool isWritten = input && output && std::fwrite(svg.data(), 1, svg.size(), input.get()) == svg.size() &&
                           std::fflush(input.get()) == 0;
    if (!isWritten)
        return {.Bytes = {},
                .Why = std::string("There is no room for a temporary file: ") + std::strerror(errno) + "."};
    std::rewind(input.get());
    pid_t process = 0;
    const int error = Start(format, input.get(), output.get(), process);
    if (error == ENOENT)
        return {.Bytes = {},
                .Why = format + " is made by the program " + Program +
                       ", which is not installed: install the package librsvg2-bin, or choose --format svg.",
                .IsMissing = true};
    int status = error;
    if (error == 0)
        backends::Repeated([&] { return ::waitpid(process, &status, 0); });
    std::string bytes = BytesOf(output.get());
    if (status == 0 && !bytes.empty())
        return {.Bytes = std::move(bytes), .Why = {}};
    return {.Bytes = {}, .Why = std::string(Program) + " could not make the " + format + " of the plot."};
}

} // namespace exporter
