// SPDX-License-Identifier: MIT
// The lines of the journal, one after the other.
#pragma once

#include "apps/quorin-journal/file_entries.h"
#include "apps/quorin-journal/options.h"
#include "apps/quorin-journal/report.h"

#include <functional>

namespace reader {

/// A command at work.
struct Job {
    const Options& Asked;
    std::vector<JournalFile> Files; ///< those that were asked for
    Report Told;
};

/// Returns what tells a person by the report, and ends once standard output is lost.
ReadingTold ToldTo(Report& report);

/// Passes each line of a file on, whatever its time. Lines that are no objects are left out and told; where a newer
/// program has begun to write, reading ends and is told. Returns true if the last line was interrupted.
bool ForEachEntry(const JournalFile& file, Report& told, const std::function<void(const Entry&)>& visit);

/// Passes each line of all files on that is within the period that was asked for. Ends early if standard output is
/// lost.
void ForEachEntry(Job& job, const std::function<void(const Entry&)>& visit);

/// True if the line begins a part that a newer program has written, in a form that this one would misread. Tells so.
bool IsOfANewerProgram(const Entry& entry, Report& told);

/// Tells that a line was left out.
void TellNoObject(const Entry& entry, Report& told);

} // namespace reader
