// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/columns.h"
#include "apps/quorin-journal/commands.h"
#include "journal/reading_words.h"

namespace reader {

namespace {

/// What a file has of a day.
struct Day {
    std::string Root; ///< its path, or the part of the file's name if the file does not say
    std::int64_t Programs = 0;
    std::int64_t Taken = 0;
    std::int64_t Replaced = 0;
    std::int64_t NotTaken = 0;
};

void Count(const Entry& entry, Day& day) {
    if (entry.Seen.Event == "start" || entry.Seen.Event == "day") {
        ++day.Programs;
        day.Root = TextIn(entry.Object(), "root");
    } else if (entry.Seen.Event == "reading") {
        const bool isStored = journal::IsStored(entry.Seen.Verdict);
        ++(!isStored ? day.NotTaken : entry.Seen.Verdict == "replaced" ? day.Replaced : day.Taken);
    }
}

std::int64_t SizeOf(const JournalFile& file) {
    OpenJournal opened;
    return opened.Open(file.Path).empty() ? opened.Size() : 0;
}

} // namespace

void ListFiles(Job& job) {
    std::vector<std::vector<std::string>> rows = {
        {"day", "root", "size", "programs", "taken", "replaced", "not taken", "file"}};
    for (const JournalFile& file : job.Files) {
        Day day{.Root = file.Name.Root};
        ForEachEntry(file, job.Told, [&day](const Entry& entry) { Count(entry, day); });
        rows.push_back({file.Name.Day, day.Root, SizeText(SizeOf(file)), std::to_string(day.Programs),
                        std::to_string(day.Taken), std::to_string(day.Replaced), std::to_string(day.NotTaken),
                        TextOf(file.Name)});
    }
    job.Told.Write(Table(rows, {false, false, true, true, true, true, true, false}));
}

} // namespace reader
