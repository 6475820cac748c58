// SPDX-License-Identifier: MIT
// Whether the readings that were taken came into a row that was saved.
#pragma once

#include "journal/journal_format.h"

#include <map>
#include <string>
#include <vector>

namespace journal {

class TakenReadings {
public:
    /// Takes any line, in the order of the journal.
    void Take(const Line& line);

    std::size_t Count() const { return Count_; }

    /// Returns the readings that are in no row that was saved, although nobody has changed or deleted them, a line
    /// each. REQUIRES: all lines were taken.
    std::vector<std::string> Findings() const;

private:
    struct Waiting {
        std::string Text;          ///< as the field has it: "14.1 %"
        std::string Words;         ///< for people
        bool MayBeChanged = false; ///< a text was typed after it
        bool IsOfThisRun = true;
    };

    void TakeReading(const Line& line);
    void TakeRow(const Line& line);

    std::map<std::string, std::vector<Waiting>> Waiting_; ///< by the download
    std::vector<std::string> Lost_;
    std::size_t Count_ = 0;
};

} // namespace journal
