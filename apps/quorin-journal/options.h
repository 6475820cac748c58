// SPDX-License-Identifier: MIT
// What the command line asks for. Each command has its own options; the journal's folder and the root are for all.
#pragma once

#include "journal/glance.h"

#include <cstddef>
#include <string>

namespace CLI {
class App;
}

namespace reader {

struct Options {
    std::string Journal; ///< the folder of the journal
    std::string Root;    ///< only the files of this root folder; empty for those of all
    journal::Period Period;
    bool OnlyRefused = false;
    bool Json = false;
    bool Port = false;       ///< only the bytes of the port
    bool Mailbox = false;    ///< only the text of the mailbox
    std::string Argument;    ///< of the command: a file, or a day
    std::string Day;         ///< of forget, the only one; empty for all before Argument
    std::size_t Session = 0; ///< of story, from 1; 0 for the last
};

// Add options to a command. The texts are checked by CheckOptions.
void AddPeriod(CLI::App& command, Options& options);
void AddReadingOptions(CLI::App& command, Options& options);
void AddSourceOptions(CLI::App& command, Options& options);

void AddStoryOptions(CLI::App& command, Options& options);
void AddForgetOptions(CLI::App& command, Options& options);
void AddArgument(CLI::App& command, Options& options, const char* name, const char* help);

/// Adds the options of all commands.
void AddPlaces(CLI::App& app, Options& options);

/// Checks the texts, and fills in what was not given. Only for use within apps::ReadCommandLine.
void CheckOptions(Options& options);

} // namespace reader
