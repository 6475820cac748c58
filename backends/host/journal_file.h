// SPDX-License-Identifier: MIT
// The files of the journal in their folder: appended to, and the oldest ones removed.
#pragma once

#include "backends/files/host_files.h"

#include <cstdint>
#include <string>
#include <vector>

namespace backends {

/// Beyond these the files of the oldest days are removed. Those of the current day stay.
struct JournalLimits {
    std::int64_t Bytes = 500'000'000; ///< of all files in the folder
    std::int64_t Days = 0;            ///< 0 for any age
};

class JournalFile {
public:
    /// `rootPath`: the root folder that the lines are about, without links.
    JournalFile(std::string folder, const std::string& rootPath, JournalLimits limits);

    /// Opens the file of a day, "2026-11-22", in place of the one that is open. Creates the folder and the file if they
    /// are missing, accessible to their owner alone. Refuses a folder or a file that is a link or another user's, and a
    /// folder to which others may write. Returns why it could not; empty on success.
    Text Open(const std::string& day);
    void Close() { File_.Close(); }
    bool IsOpen() const { return File_.Valid(); }
    /// True if the open file was removed from its folder.
    bool IsRemoved() const;
    const std::string& Day() const { return Day_; } ///< of the file that was opened last

    /// Appends a line and its line end. Each goes to the file by one call, so that a killed program leaves whole lines;
    /// a full disk may leave the beginning of one, without a line end.
    ErrorNumber Append(const std::string& line);

    /// Returns the descriptor of the open file, to be synced; -1 if none is open.
    int Number() const { return File_.Number(); }

    /// Removes what is beyond the limits, and returns the names of the removed files. Looks into the folder when a file
    /// was opened, and then each time that a hundredth of the limit was written.
    std::vector<std::string> RemoveOldest();

private:
    std::string Folder_;
    std::string RootKey_;
    JournalLimits Limits_;
    Descriptor File_;
    std::string Day_;
    std::int64_t UntilLook_ = 0; ///< bytes to be written before RemoveOldest looks into the folder
};

} // namespace backends
