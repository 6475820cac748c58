// SPDX-License-Identifier: MIT
// The lines of a file of the journal, one after the other, for any program.
#pragma once

#include "apps/quorin-journal/journal_files.h"
#include "journal/glance.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace reader {

using journal::NumberIn;
using journal::TextIn;

/// A line of a file. Valid during the call that it was passed to.
struct Entry {
    const JournalFile& File;
    std::int64_t Number; ///< of the line, from 1
    std::string_view Bytes;
    const journal::Glance& Seen;

    journal::Line Object() const { return journal::Line::parse(Bytes); }
};

/// Who is told what could not be read, and can end the reading. All three are called.
struct ReadingTold {
    std::function<void(const Entry&)> NoObject;          ///< a line was left out
    std::function<void(const std::string& what)> Failed; ///< the rest of a file was left out
    std::function<bool()> Ends;                          ///< asked after each line: true if no more is wanted
};

/// Passes each line of a file on, whatever its time. Lines that are no objects are left out and told; where a newer
/// program has begun to write, reading ends and is told. Returns true if the last line was interrupted.
bool ReadEntries(const JournalFile& file, const ReadingTold& told, const std::function<void(const Entry&)>& visit);

/// Returns why the rest of a file is left out from this line on: a newer program has written it, in a form that this
/// one would misread. Empty for any other line.
std::string NewerRefusal(const Entry& entry);

/// Returns the file and the number of a line, for a message.
std::string PlaceOf(const Entry& entry);

} // namespace reader
