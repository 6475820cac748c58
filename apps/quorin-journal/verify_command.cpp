// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/commands.h"
#include "apps/quorin-journal/table_lines.h"
#include "journal/reading_fates.h"
#include "journal/reading_words.h"
#include "journal/runs.h"
#include "journal/saved_tables.h"
#include "journal/taken_readings.h"

#include <algorithm>
#include <filesystem>
#include <map>

namespace reader {

namespace {

/// What the journal has of one root folder.
struct Kept {
    std::string Root; ///< its path; empty if no line names it
    journal::SavedTables Tables;
    journal::TakenReadings Readings;
    journal::ReadingFates Others;
    journal::Runs Runs;
};

std::map<std::string, Kept> ReadAll(Job& job) {
    std::map<std::string, Kept> roots;
    for (const JournalFile& file : job.Files) {
        Kept& kept = roots[file.Name.Root];
        const bool isTorn = ForEachEntry(file, job.Told, [&kept](const Entry& entry) {
            const std::string& event = entry.Seen.Event;
            const bool begins = event == "start" || event == "day";
            const journal::Line line = entry.Object();
            if (begins)
                kept.Root = TextIn(line, "root");
            kept.Tables.Take(line);
            kept.Readings.Take(line);
            kept.Others.Take(line);
            kept.Runs.Take(line);
        });
        if (isTorn)
            kept.Runs.Torn();
        kept.Runs.EndOfFile();
    }
    return roots;
}

std::string Counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string StateOf(const journal::SavedTable& table) {
    const std::string changes = table.Changes == 0 ? "" : ", after " + Counted(table.Changes, "change");
    if (!table.DeletedAt.empty())
        return table.Name + ": deleted " + journal::TimeText(table.DeletedAt) + changes;
    const auto saved = std::count_if(table.Rows.begin(), table.Rows.end(), [](const auto& row) { return !!row; });
    return table.Name + ": " + Counted(static_cast<std::size_t>(saved), "record") +
           (table.Changes == 0 ? " as saved" : " as saved last") + changes;
}

void CheckTable(const journal::SavedTable& table, const std::string& root, Report& told) {
    const TableLines found = table.DeletedAt.empty() ? ReadTable(root, table.Name) : TableLines();
    if (!found.Trouble.empty())
        return told.Found(table.Name + " can't be compared: " + found.Trouble);
    const std::vector<std::string> findings = Compare(table, found.Lines);
    if (findings.empty())
        told.WriteLine("  " + StateOf(table));
    for (const std::string& finding : findings)
        told.Found(finding);
}

void CheckRoot(const Kept& kept, const std::string& key, Report& told) {
    told.WriteLine((kept.Root.empty() ? key : kept.Root) + ":");
    std::error_code error;
    if (!std::filesystem::is_directory(kept.Root, error))
        return told.Found("the root folder is not there");
    for (const journal::SavedTable* const table : kept.Tables.Downloads())
        CheckTable(*table, kept.Root, told);
    const std::size_t count = kept.Readings.Count();
    told.WriteLine("  " + Counted(count, "reading") + (count == 1 ? " was taken" : " were taken"));
    for (const std::string& line : kept.Others.Counts())
        told.WriteLine("  " + line);
    for (const std::string& line : kept.Readings.Forgotten())
        told.WriteLine("  " + line);
    for (const std::string& line : kept.Runs.Breaks())
        told.WriteLine("  " + line);
    for (const journal::UnreadText& text : kept.Runs.Unread())
        told.Found(text.Words());
    for (const std::string& finding : kept.Tables.Findings())
        told.Found(finding);
    for (const std::string& finding : kept.Readings.Findings())
        told.Found(finding);
    for (const std::string& finding : kept.Others.Findings())
        told.Found(finding);
}

} // namespace

void VerifyTables(Job& job) {
    const auto roots = ReadAll(job);
    if (std::all_of(roots.begin(), roots.end(), [](const auto& root) { return root.second.Runs.IsEmpty(); }))
        return job.Told.Refused("no session in the journal");
    for (const auto& [key, kept] : roots)
        CheckRoot(kept, key, job.Told);
    job.Told.WriteLine(job.Told.Status() == start::ExitStatus::Ended ? "All is explained." : "Not all is explained.");
}

} // namespace reader
