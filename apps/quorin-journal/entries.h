// SPDX-License-Identifier: MIT
// The lines of the journal, one after the other.
#pragma once

#include "apps/quorin-journal/journal_files.h"
#include "apps/quorin-journal/options.h"
#include "apps/quorin-journal/report.h"
#include "journal/glance.h"

#include <functional>

namespace reader {

using journal::NumberIn;
using journal::TextIn;

/// A command at work.
struct Job {
    const Options& Asked;
    std::vector<JournalFile> Files; ///< those that were asked for
    Report Told;
};

/// A line of a file. Valid during the call that it was passed to.
struct Entry {
    const JournalFile& File;
    std::int64_t Number; ///< of the line, from 1
    std::string_view Bytes;
    const journal::Glance& Seen;

    journal::Line Object() const { return journal::Line::parse(Bytes); }
};

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

/// Returns the file and the number of a line, for a message.
std::string PlaceOf(const Entry& entry);

} // namespace reader
