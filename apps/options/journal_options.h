// SPDX-License-Identifier: MIT
// The options of the journal, for the programs that keep one.
#pragma once

#include "apps/options/command_line.h"
#include "backends/host/journal.h"

#include <cstdint>
#include <optional>
#include <string>

namespace apps {

/// What a command line says of the journal.
struct JournalWords {
    std::string Folder;
    bool None = false;
    std::int64_t Megabytes = 500;
    std::int64_t Days = 0;
};

/// `byDefault`: the text for --help.
void AddJournalOptions(CLI::App& app, JournalWords& words, const std::string& byDefault);

/// Returns the folder of the journals, if none is named: "journal" in the folder of the program's state.
std::optional<std::string> UsualJournal();

/// Returns where and how to keep a journal, without its root folder; nothing if none is to be kept. `folder`: where, if
/// no folder is named.
std::optional<backends::JournalPlan> UnderstoodJournal(const JournalWords& words,
                                                       const std::optional<std::string>& folder);

/// Returns a program's name, version and words for the journal.
backends::ProgramName ProgramOf(const std::string& name, int count, const char* const* words);

} // namespace apps
