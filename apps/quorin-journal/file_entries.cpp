// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/file_entries.h"

namespace reader {

bool ReadEntries(const JournalFile& file, const ReadingTold& told, const std::function<void(const Entry&)>& visit) {
    OpenJournal journal;
    if (const std::string why = journal.Open(file.Path); !why.empty()) {
        told.Failed("can't read " + file.Path + ": " + why);
        return false;
    }
    journal::Glance seen;
    std::int64_t number = 0;
    while (const auto line = journal.Next()) {
        const Entry entry{file, ++number, *line, seen};
        const bool isObject = LookAt(*line, seen);
        if (const std::string why = isObject ? NewerRefusal(entry) : std::string(); !why.empty()) {
            told.Failed(why);
            return false;
        }
        isObject ? visit(entry) : told.NoObject(entry);
        if (told.Ends())
            return false;
    }
    if (!journal.Error().empty())
        told.Failed("can't read all of " + file.Path + ": " + journal.Error());
    return journal.IsTorn();
}

std::string NewerRefusal(const Entry& entry) {
    if (entry.Seen.Event != "start" && entry.Seen.Event != "day")
        return {};
    const std::int64_t version = NumberIn(entry.Object(), "journal");
    if (version <= journal::Version)
        return {};
    return PlaceOf(entry) + ": from here on a newer program has written, journal version " + std::to_string(version) +
           "; this one reads version " + std::to_string(journal::Version) +
           ". The rest of the file is left out: use the newer quorin-journal";
}

std::string PlaceOf(const Entry& entry) {
    return entry.File.Path + ", line " + std::to_string(entry.Number);
}

} // namespace reader
