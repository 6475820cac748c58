// SPDX-License-Identifier: MIT
#include "apps/options/journal_options.h"

#include "apps/options/folders.h"

#include <CLI/CLI.hpp>

namespace apps {

void AddJournalOptions(CLI::App& app, JournalWords& words, const std::string& byDefault) {
    auto* folder = app.add_option("--journal", words.Folder, "Folder of the journal, which records readings and acts")
                       ->type_name("DIR")
                       ->check([](const std::string& text) { return text.empty() ? "names no folder" : ""; }, "")
                       ->default_str(byDefault);
    app.add_flag("--no-journal", words.None, "Keep no journal")->default_str("off")->excludes(folder);
    app.add_option("--journal-size", words.Megabytes, "Remove the oldest days beyond this size of the folder, in MB")
        ->type_name("MB")
        ->check(CLI::Range(std::int64_t{1}, std::int64_t{1'000'000}).description(""))
        ->capture_default_str();
    app.add_option("--journal-days", words.Days, "Remove days that are older than this number of days; 0: of any age")
        ->type_name("N")
        ->check(CLI::Range(std::int64_t{0}, std::int64_t{1'000'000}).description(""))
        ->capture_default_str();
}

std::optional<std::string> UsualJournal() {
    const auto state = StateFolder();
    return state ? std::optional(*state + "/journal") : std::nullopt;
}

std::optional<backends::JournalPlan> UnderstoodJournal(const JournalWords& words,
                                                       const std::optional<std::string>& folder) {
    const std::string chosen = words.Folder.empty() ? folder.value_or("") : words.Folder;
    if (words.None || chosen.empty())
        return std::nullopt;
    return backends::JournalPlan{
        .Folder = chosen, .Root = {}, .Limits = {.Bytes = words.Megabytes * 1'000'000, .Days = words.Days}};
}

backends::ProgramName ProgramOf(const std::string& name, int count, const char* const* words) {
    return {name, VersionText(name).substr(name.size() + 1), {words + 1, words + count}};
}

} // namespace apps
