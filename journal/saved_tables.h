// SPDX-License-Identifier: MIT
// What the tables of a root folder contain by the journal, to be compared with what they contain.
#pragma once

#include "journal/journal_format.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace journal {

/// A row as it was saved last.
struct SavedRow {
    std::string Line;
    std::string Time;
};

struct SavedTable {
    std::string Name;
    std::vector<std::optional<SavedRow>>
        Rows;                ///< row n is at index n - 1; empty for one that the journal does not know
    std::size_t Changes = 0; ///< rows that were saved or deleted after they had been saved
    bool IsWhole = false;    ///< the journal has the table from its first row on
    bool IsDownload = false; ///< the register has named it
    std::string DeletedAt;   ///< empty unless its download was deleted
};

class SavedTables {
public:
    /// Takes any line, in the order of the journal.
    void Take(const Line& line);

    /// Returns the downloads by name. Other tables are written without the journal as well, by the installation of a
    /// driver.
    std::vector<const SavedTable*> Downloads() const;

    /// Returns what can't be explained by the journal alone, a line each.
    const std::vector<std::string>& Findings() const { return Findings_; }

private:
    SavedTable& TableOf(const std::string& name);
    void TakeRow(SavedTable& table, const Line& line);
    void Saved(SavedTable& table, std::size_t row, const Line& line);
    void TakeRegister(const Line& line);

    std::map<std::string, SavedTable, std::less<>> Tables_; ///< by name without an ending
    std::vector<std::string> Findings_;
};

/// Compares a table with its lines, of which the first is the header; nothing if there is no such file. Returns what
/// can't be explained, a line each.
std::vector<std::string> Compare(const SavedTable& table, const std::optional<std::vector<std::string>>& lines);

} // namespace journal
