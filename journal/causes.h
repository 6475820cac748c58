// SPDX-License-Identifier: MIT
// What led to a change of a row: the acts and readings since the change before.
#pragma once

#include "journal/journal_format.h"

#include <string>
#include <vector>

namespace journal {

class Causes {
public:
    /// Takes any line, in the order of the file.
    void Take(const Line& line);
    /// Returns the acts and readings that led to the last `row` line, for people: `set "North", menu Close`. Several
    /// rows that change after one act have the same ones.
    std::string Text() const;

private:
    void Add(std::string cause);

    std::vector<std::string> Last_;
    bool IsUsed_ = false;  ///< a row has changed since the last act or reading
    std::size_t Left_ = 0; ///< how many there were before the ones in Last_
};

} // namespace journal
