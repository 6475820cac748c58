// SPDX-License-Identifier: MIT
// The commands of quorin-console, as rows: a word, its arguments, its help, its routine.
#pragma once

#include "apps/quorin-console/writer.h"
#include "backends/host/host_back_end.h"
#include "backends/input/hand.h"
#include "companion/readings.h"

#include <string>

namespace console {

/// The device that a command works on, who operates it, and where the command writes its output.
struct Target {
    backends::HostBackEnd& Device;
    backends::Hand& User;
    Writer& Out;
    const companion::KeptReadings& Readings;
};

/// The parts of a line: the word, and the rest after the blanks that follow the word.
struct CommandLine {
    std::string Word;
    std::string Rest;
};

CommandLine Parse(const std::string& line);

/// Runs a command. Returns an empty text on success, else why it failed.
std::string Execute(const Target& target, const CommandLine& line);

/// Returns all commands with their help, for --help.
std::string CommandHelp();

} // namespace console
