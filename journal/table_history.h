// SPDX-License-Identifier: MIT
// Which record a row of a table was, over all additions and deletions that the journal has.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace journal {

/// The rows of one table, by number. A row that the journal has not named yet is a record of its own, too.
class TableHistory {
public:
    /// Records are numbered from 0 in the order in which they were first named.
    using Record = std::size_t;
    static constexpr Record None = static_cast<Record>(-1);

    // Rows count from 1. Each returns the record that the event is about; None for a row that no table can have.
    Record Named(std::size_t row);
    Record Added(std::size_t row);
    Record Deleted(std::size_t row);
    /// The table itself was deleted: all its records are gone, and rows that are named later are of another table.
    void Dropped() { Rows_.clear(); }

    /// Returns the records that are there, by row; None for a row that was not named.
    const std::vector<Record>& Rows() const { return Rows_; }

private:
    bool Reach(std::size_t row);

    std::vector<Record> Rows_; ///< the record of row n is at index n - 1
    Record Next_ = 0;
};

/// True if two bare names mean the same table. That of a line database may lack the ending of a file.
bool IsSameTable(std::string_view one, std::string_view other);

/// True for the register of downloads.
bool IsRegister(std::string_view file);

/// Returns the file of a download, of its line in the register: the second field.
std::string FileOfRegisterLine(std::string_view line);

} // namespace journal
