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
        if (!LookAt(*line, seen))
            TellNoObject(entry, told);
        else if (IsOfANewerProgram(entry, told))
            return false;
        else
            visit(entry);
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

bool IsOfANewerProgram(const Entry& entry, Report& told) {
    if (entry.Seen.Event != "start" && entry.Seen.Event != "day")
        return false;
    const std::int64_t version = NumberIn(entry.Object(), "journal");
    if (version <= journal::Version)
        return false;
    told.Failed(PlaceOf(entry) + ": from here on a newer program has written, journal version " +
                std::to_string(version) + "; this one reads version " + std::to_string(journal::Version) +
                ". The rest of the file is left out: use the newer quorin-journal");
    return true;
}

void TellNoObject(const Entry& entry, Report& told) {
    told.Odd(PlaceOf(entry) + ": no JSON object, left out");
}

std::string PlaceOf(const Entry& entry) {
    return entry.File.Path + ", line " + std::to_string(entry.Number);
}

} // namespace reader
