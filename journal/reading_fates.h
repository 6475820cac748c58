// SPDX-License-Identifier: MIT
// What became of the readings that are not in the field that asked for them.
#pragma once

#include "journal/journal_format.h"

#include <map>
#include <string>
#include <vector>

namespace journal {

class ReadingFates {
public:
    /// Takes any line, in the order of the journal.
    void Take(const Line& line);

    /// Returns how many have had each verdict, a line each: "2 readings (norow): refused, no row asked for it". One
    /// that waited counts by its second verdict, and as waiting as long as it has none.
    std::vector<std::string> Counts() const;

    /// Returns those that may be lost, a line each: what waits, what was shown and is in no file, what came while a
    /// question was open, and what a newer program has judged in a word that is not known here. One of them that was
    /// taken again is none. REQUIRES: all lines were taken.
    std::vector<std::string> Findings() const;

private:
    struct Open {
        std::string Key; ///< what the same result has in common with its second verdict
        std::string Verdict;
        std::string Words; ///< for people
        bool IsOfThisRun = true;
    };

    void TakeReading(const Line& line);
    void TakeSecondVerdict(const std::string& key, const std::string& verdict);

    std::map<std::string, std::size_t> Counts_; ///< by the verdict, without those that wait
    std::vector<Open> Open_;
    bool ComesAgain_ = false; ///< a person has handed a reading to the program once more
};

} // namespace journal
