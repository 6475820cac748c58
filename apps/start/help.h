// SPDX-License-Identifier: MIT
// How --help and messages about a wrong command line look in every program.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace start {

/// Gives the help of a program one line for each option: its names, what its value is, what it means, its default.
/// Called after all options and commands were added.
void ShowOneLineEach(CLI::App& app);

/// Makes a message about a wrong command line begin with the program's name, as all its messages do.
void NameTheProgram(CLI::App& app);

/// Returns the exit statuses of all programs, a line each.
std::string ExitStatusHelp();

} // namespace start
