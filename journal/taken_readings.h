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

    /// Returns the ones that a person has forgotten with a record that was not saved, a line each.
    const std::vector<std::string>& Forgotten() const { return Forgotten_; }

    /// Returns the results of the run so far that no row of a table has, separated by commas; empty for none.
    std::string Unsaved(const std::string& file) const;

private:
    struct Waiting {
        std::string Text;          ///< as the field has it: "14.1 %"
        std::string Result;        ///< "Moisture 14.1 %"
        std::string Words;         ///< for people
        bool MayBeChanged = false; ///< a text was typed after it
        bool IsOfThisRun = true;
        bool IsPutBack = false; ///< a person has put its record back, which is saved next
    };

    void TakeReading(const Line& line);
    void TakeRow(const Line& line);
    void DownloadDeleted(const std::string& deleted);
    void RunIsOver();
    void TakeRecovery(const Line& act);

    std::map<std::string, std::vector<Waiting>> Waiting_; ///< by the download
    std::vector<std::string> Lost_;
    std::vector<std::string> Forgotten_;
    std::size_t Count_ = 0;
};

} // namespace journal
