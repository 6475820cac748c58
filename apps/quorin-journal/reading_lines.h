// SPDX-License-Identifier: MIT
// Readings of the journal, a line each.
#pragma once

#include "apps/quorin-journal/entries.h"

#include "journal/runs.h"

#include <map>
#include <string>

namespace reader {

/// Writes the readings that were asked for, for people or for programs.
class ReadingLines {
public:
    /// `namesRoots`: the readings of another root folder than those before begin with its path.
    ReadingLines(const Options& asked, bool namesRoots, Report& told)
        : Asked_(asked), NamesRoots_(namesRoots), Told_(told) {}

    /// Writes the line if it is a reading that was asked for.
    void Take(const Entry& entry);
    /// Writes text of a root folder that has no readings, if its time was asked for.
    void TakeUnread(const std::string& root, const journal::UnreadText& text);

private:
    void LearnRoot(const Entry& entry);
    void WriteRoot(const std::string& root);

    const Options& Asked_;
    const bool NamesRoots_;
    Report& Told_;
    std::map<std::string, std::string> Paths_; ///< of root folders, by the part that stands for them in names of files
    std::string LastRoot_;                     ///< that part, for the last line
};

} // namespace reader
