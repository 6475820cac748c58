// SPDX-License-Identifier: MIT
// Rows of a CSV file as rows of a download.
#pragma once

#include "apps/quorin-import/matching.h"

#include <cstddef>
#include <string>
#include <vector>

namespace importer {

/// Makes one row after the other, and collects what is odd about them.
class RowMaker {
public:
    /// Both must exist as long as this. `columns`: the header of the CSV file.
    RowMaker(const Matching& matching, const std::vector<std::string>& columns);

    /// Returns the fields of a row, joined by bars. `line`: its number in the CSV file, for the messages.
    std::string Row(const std::vector<std::string>& cells, std::size_t line);

    /// A line for each odd value or row: twenty, and how many more there are.
    std::vector<std::string> Odd() const;

private:
    std::string FieldOf(const FieldSource& source, const std::vector<std::string>& cells);
    std::string DateOf(const std::string& cell);
    std::string Fitting(const std::string& text);
    void LookAtLength(const std::vector<std::string>& cells);
    void Tell(const std::string& what);

    const Matching& Matching_;
    const std::vector<std::string>& Columns_;
    std::size_t Line_ = 0;
    std::size_t OddCount_ = 0;
    std::vector<std::string> Odd_;
};

} // namespace importer
