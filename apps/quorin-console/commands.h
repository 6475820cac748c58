// SPDX-License-Identifier: MIT
// The commands of quorin-console, as rows: a word, its arguments, what it stands for, its routine.
#pragma once

#include <string>

namespace console {

class Session;

/// A line taken apart: the word, and the rest as it stands behind the blanks that follow it.
struct CommandLine {
    std::string Word;
    std::string Rest;
};

CommandLine Parse(const std::string& line);

/// Runs a command. An empty text, or why it could not be carried out.
std::string Execute(Session& session, const CommandLine& line);

/// All commands with what they stand for, for --help.
std::string CommandHelp();

} // namespace console
