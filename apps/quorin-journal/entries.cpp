// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/entries.h"

namespace reader {

bool ForEachEntry(const JournalFile& file, Report& told, const std::function<void(const Entry&)>& visit) {
    OpenJournal journal;
    if (const std::string why = journal.Open(file.Path); !why.empty()) {
        told.Failed("can't read " + file.Path + ": " + why);
        return false;
    }
    journal::Glance seen;
    std::int64_t number = 0;
    while (const auto line = journal.Next()) {
        const Entry entry{file, ++number, *line, seen};
        if (LookAt(*line, seen))
            visit(entry);
        else
            TellNoObject(entry, told);
        if (told.Lost())
            return false;
    }
    if (!journal.Error().empty())
        told.Failed("can't read all of " + file.Path + ": " + journal.Error());
    return journal.IsTorn();
}

void ForEachEntry(Job& job, const std::function<void(const Entry&)>& visit) {
    for (const JournalFile& file : job.Files) {
        ForEachEntry(file, job.Told, [&](const Entry& entry) {
            if (job.Asked.Period.Has(entry.Seen.Time))
                visit(entry);
        });
    }
}

void TellNoObject(const Entry& entry, Report& told) {
    told.Odd(PlaceOf(entry) + ": no JSON object, left out");
}

std::string PlaceOf(const Entry& entry) {
    return entry.File.Path + ", line " + std::to_string(entry.Number);
}

} // namespace reader
