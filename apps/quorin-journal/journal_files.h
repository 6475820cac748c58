// SPDX-License-Identifier: MIT
// The files of a journal, and their lines.
#pragma once

#include "backends/descriptor/descriptor.h"
#include "journal/journal_format.h"
#include "journal/line_cutter.h"

#include <optional>
#include <string>
#include <vector>

namespace reader {

struct JournalFile {
    journal::FileName Name;
    std::string Path;
};

/// Finds the files of a journal, by day and then by root. `root` is a root folder, which need not exist any more; empty
/// for all. Returns why the folder can't be read, or an empty text. Other files in the folder are passed over.
std::string FindFiles(const std::string& folder, const std::string& root, std::vector<JournalFile>& files);

/// An open file. Its lines are read as it grows.
class OpenJournal {
public:
    /// Returns why the file can't be opened, or an empty text.
    std::string Open(const std::string& path);
    /// Returns the next complete line without its LF, valid until the next call. Returns nothing at the end, or if
    /// reading has failed: Error() says which. What is appended later can be read then.
    std::optional<std::string_view> Next();
    /// True if the last line has no end. REQUIRES: Next() has returned nothing.
    bool IsTorn() const { return Cutter_.HasRest(); }
    const std::string& Error() const { return Error_; }
    void SkipToEnd();
    std::int64_t Size() const;

private:
    backends::Descriptor File_;
    std::int64_t Offset_ = 0;
    journal::LineCutter Cutter_;
    std::string Error_;
};

} // namespace reader
