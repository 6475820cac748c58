// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/commands.h"
#include "apps/quorin-journal/reading_lines.h"

#include <algorithm>

namespace reader {

namespace {

bool AreOfSeveralRoots(const std::vector<JournalFile>& files) {
    return std::any_of(files.begin(), files.end(),
                       [&files](const JournalFile& file) { return file.Name.Root != files.front().Name.Root; });
}

} // namespace

void ShowReadings(Job& job) {
    ReadingLines lines(job.Asked, AreOfSeveralRoots(job.Files), job.Told);
    for (const JournalFile& file : job.Files)
        ForEachEntry(file, job.Told, [&lines](const Entry& entry) { lines.Take(entry); });
}

} // namespace reader
