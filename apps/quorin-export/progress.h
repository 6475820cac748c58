// SPDX-License-Identifier: MIT
// Tells a person at a terminal how far an export is.
#pragma once

#include <chrono>
#include <string>

namespace exporter {

/// Writes to standard error if that is a terminal and the export takes more than a second.
class Progress {
public:
    /// `expected`: bytes of the table, which what is made of it comes near to.
    Progress(std::string file, std::size_t expected);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress(); ///< removes the line

    void Advance(std::size_t bytes);

private:
    std::string File_;
    std::size_t Expected_;
    std::size_t Made_ = 0;
    bool IsTerminal_;
    bool IsShown_ = false;
    std::chrono::steady_clock::time_point Next_;
};

} // namespace exporter
