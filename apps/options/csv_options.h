// SPDX-License-Identifier: MIT
// The options of CSV files, for the programs that write and read them.
#pragma once

#include "apps/options/command_line.h"

#include <string>

namespace apps {

/// What a command line says of CSV.
struct CsvWords {
    std::string Delimiter = ",";
    std::string LineEnd = "crlf";
};

/// `lineEnd`: the text of --line-end for --help.
void AddCsvOptions(CLI::App& app, CsvWords& words, const std::string& lineEnd);

// Only for use within ReadCommandLine, because they may call Refuse.

char DelimiterOf(const CsvWords& words);
std::string LineEndOf(const CsvWords& words);

} // namespace apps
