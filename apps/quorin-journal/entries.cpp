// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/entries.h"

namespace reader {

ReadingTold ToldTo(Report& report) {
    return {.NoObject = [&report](const Entry& entry) { TellNoObject(entry, report); },
            .Failed = [&report](const std::string& what) { report.Failed(what); },
            .Ends = [&report] { return report.Lost(); }};
}

bool ForEachEntry(const JournalFile& file, Report& told, const std::function<void(const Entry&)>& visit) {
    return ReadEntries(file, ToldTo(told), visit);
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
    const std::string refusal = NewerRefusal(entry);
    if (!refusal.empty())
        told.Failed(refusal);
    return !refusal.empty();
}

void TellNoObject(const Entry& entry, Report& told) {
    told.Odd(PlaceOf(entry) + ": no JSON object, left out");
}

} // namespace reader
