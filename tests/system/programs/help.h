// SPDX-License-Identifier: MIT
// What the --help of a program says.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace programs {

struct Help {
    std::map<std::string, std::string> Options; ///< "--port" and the name of its value, empty for none
    std::vector<std::string> Arguments;         ///< the words without an option, as the help calls them
    std::vector<std::string> Subcommands;
    std::vector<std::string> ScriptCommands; ///< the first words of the commands that a script may have
};

/// Returns the names of the programs: the folders of apps that have a main.cpp.
std::vector<std::string> Programs();

/// Runs a program, with a sub-command unless it is empty. Fails the test if it does not end with 0.
Help HelpOf(const std::string& program, const std::string& subcommand = "");

/// Returns the standard output of a shell command. Fails the test if its status is not 0.
std::string OutputOf(const std::string& command);

std::string BytesOf(const std::string& path);

} // namespace programs
