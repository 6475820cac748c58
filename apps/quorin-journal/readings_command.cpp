// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/commands.h"
#include "apps/quorin-journal/reading_lines.h"

#include "journal/runs.h"

#include <algorithm>
#include <map>

namespace reader {

namespace {

bool AreOfSeveralRoots(const std::vector<JournalFile>& files) {
    return std::any_of(files.begin(), files.end(),
                       [&files](const JournalFile& file) { return file.Name.Root != files.front().Name.Root; });
}

} // namespace

void ShowReadings(Job& job) {
    ReadingLines lines(job.Asked, AreOfSeveralRoots(job.Files), job.Told);
    std::map<std::string, journal::Runs> roots;
    for (const JournalFile& file : job.Files) {
        journal::Runs& runs = roots[file.Name.Root];
        const bool isTorn = ForEachEntry(file, job.Told, [&](const Entry& entry) {
            lines.Take(entry);
            if (!job.Asked.Json)
                runs.Take(entry.Object());
        });
        if (isTorn)
            runs.Torn();
        runs.EndOfFile();
    }
    for (const auto& [root, runs] : roots) {
        for (const journal::UnreadText& text : runs.Unread())
            lines.TakeUnread(root, text);
    }
}

} // namespace reader
