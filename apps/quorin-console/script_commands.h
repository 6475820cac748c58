// SPDX-License-Identifier: MIT
// The commands of quorin-console, as rows: a word, its arguments, what it stands for, its routine.
#pragma once

#include "apps/quorin-console/writer.h"
#include "backends/loop/back_end.h"

#include <string>

namespace console {

/// What a command works on, and where it writes what it was asked for.
struct Target {
    backends::BackEnd& Device;
    Writer& Out;
};

/// A line taken apart: the word, and the rest as it stands behind the blanks that follow it.
struct CommandLine {
    std::string Word;
    std::string Rest;
};

CommandLine Parse(const std::string& line);

/// Runs a command. An empty text, or why it could not be carried out.
std::string Execute(const Target& target, const CommandLine& line);

/// All commands with what they stand for, for --help.
std::string CommandHelp();

} // namespace console
