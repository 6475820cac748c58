// SPDX-License-Identifier: MIT
#include "apps/options/csv_options.h"

#include <CLI/CLI.hpp>

#include <string_view>

namespace apps {

void AddCsvOptions(CLI::App& app, CsvWords& words, const std::string& lineEnd) {
    app.add_option("--delimiter", words.Delimiter, "Between the fields of CSV: a character, or tab")
        ->type_name("CHAR")
        ->default_str(",");
    app.add_option("--line-end", words.LineEnd, lineEnd)->type_name("crlf|lf")->default_str("crlf");
}

char DelimiterOf(const CsvWords& words) {
    const std::string& text = words.Delimiter;
    if (text == "tab")
        return '\t';
    if (text.size() != 1)
        Refuse("--delimiter", text, "is not one character, such as \";\", or the word tab");
    constexpr std::string_view Never = "|\"\r\n";
    if (Never.find(text.front()) != std::string_view::npos)
        Refuse("--delimiter", text, "can't be it: a table has bars between its fields, and CSV has quotes around them");
    return text.front();
}

std::string LineEndOf(const CsvWords& words) {
    if (words.LineEnd != "crlf" && words.LineEnd != "lf")
        Refuse("--line-end", words.LineEnd, "is none of crlf, lf");
    return words.LineEnd == "lf" ? "\n" : "\r\n";
}

} // namespace apps
