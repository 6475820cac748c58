// SPDX-License-Identifier: MIT
#include "journal/saved_tables.h"

#include "journal/glance.h"
#include "journal/table_history.h"

#include <algorithm>

namespace journal {

namespace {

constexpr std::size_t LargestRow = 10'000'000; // a line of the journal may be damaged
constexpr const char* ByAnother = "by another tool, or by a program that kept no journal";

/// Returns a line as the journal and a table have it in common: the journal replaces what is not UTF-8, a table has
/// blanks for line feeds and NULs.
std::string Common(std::string line) {
    std::replace_if(
        line.begin(), line.end(), [](char character) { return character == '\n' || character == '\0'; }, ' ');
    return Line(line).dump(-1, ' ', false, Line::error_handler_t::replace);
}

std::string RowName(const SavedTable& table, std::size_t row) {
    return table.Name + ", record " + std::to_string(row);
}

std::string Quoted(const std::string& line) {
    return "\"" + line + "\"";
}

} // namespace

SavedTable& SavedTables::TableOf(const std::string& name) {
    constexpr std::string_view Ending = ".txt";
    SavedTable& table = Tables_[name.ends_with(Ending) ? name.substr(0, name.size() - Ending.size()) : name];
    if (table.Name.empty())
        table.Name = name;
    return table;
}

void SavedTables::Take(const Line& line) {
    if (TextIn(line, "event") != "row" || !TextIn(line, "why").empty())
        return;
    const std::string file = TextIn(line, "file");
    TakeRow(TableOf(file), line);
    if (IsRegister(file))
        TakeRegister(line);
}

void SavedTables::TakeRow(SavedTable& table, const Line& line) {
    const std::string what = TextIn(line, "what");
    const auto row = static_cast<std::size_t>(NumberIn(line, "row"));
    if (row < 1 || row > LargestRow)
        return;
    const bool isAdded = what == "added";
    const std::size_t least = isAdded ? row - 1 : row;
    if (table.Rows.size() < least) {
        if (table.IsWhole)
            Findings_.push_back(RowName(table, table.Rows.size() + 1) + " was added " + ByAnother + ", before " +
                                TextIn(line, "time"));
        table.IsWhole = false;
        table.Rows.resize(least);
    }
    const auto place = table.Rows.begin() + static_cast<std::ptrdiff_t>(row - 1);
    if (isAdded) {
        table.Rows.insert(place, SavedRow{TextIn(line, "new"), TextIn(line, "time")});
    } else if (what == "saved") {
        Saved(table, row, line);
    } else if (what == "deleted") {
        ++table.Changes;
        table.Rows.erase(place);
    }
}

void SavedTables::Saved(SavedTable& table, std::size_t row, const Line& line) {
    std::optional<SavedRow>& known = table.Rows[row - 1];
    const std::string old = TextIn(line, "old");
    if (known && Common(known->Line) != Common(old))
        Findings_.push_back(RowName(table, row) + " was changed " + ByAnother + ", between " + known->Time + " and " +
                            TextIn(line, "time") + ": it was saved as " + Quoted(known->Line) + " and found as " +
                            Quoted(old));
    table.Changes += known ? 1 : 0;
    known = SavedRow{TextIn(line, "new"), TextIn(line, "time")};
}

void SavedTables::TakeRegister(const Line& line) {
    const std::string what = TextIn(line, "what");
    const std::string old = FileOfRegisterLine(TextIn(line, "old"));
    const std::string now = FileOfRegisterLine(TextIn(line, "new"));
    for (const std::string& file : {old, now}) {
        if (!file.empty())
            TableOf(file).IsDownload = true;
    }
    if (what == "deleted" && !old.empty()) {
        SavedTable& table = TableOf(old);
        table.Changes += table.Rows.size();
        table.Rows.clear();
        table.DeletedAt = TextIn(line, "time");
    } else if (what == "saved" && !now.empty() && now != old) {
        SavedTable& table = TableOf(now);
        table.Rows.clear();
        table.DeletedAt.clear();
        table.IsWhole = true;
    }
}

std::vector<const SavedTable*> SavedTables::Downloads() const {
    std::vector<const SavedTable*> downloads;
    for (const auto& [name, table] : Tables_) {
        if (table.IsDownload || name.starts_with("qrn"))
            downloads.push_back(&table);
    }
    std::erase_if(downloads, [](const SavedTable* table) { return IsRegister(table->Name); });
    return downloads;
}

std::vector<std::string> Compare(const SavedTable& table, const std::optional<std::vector<std::string>>& lines) {
    std::vector<std::string> findings;
    if (!table.DeletedAt.empty())
        return findings;
    const std::size_t there = lines && !lines->empty() ? lines->size() - 1 : 0;
    for (std::size_t row = 1; row <= table.Rows.size(); ++row) {
        const auto& saved = table.Rows[row - 1];
        if (!saved)
            continue;
        const std::string what = RowName(table, row) + ", saved " + saved->Time + " as " + Quoted(saved->Line);
        if (row > there)
            findings.push_back(what + ", is missing: it was removed " + ByAnother);
        else if (Common((*lines)[row]) != Common(saved->Line))
            findings.push_back(what + ", is " + Quoted((*lines)[row]) + " now: it was changed " + ByAnother);
    }
    for (std::size_t row = table.Rows.size() + 1; table.IsWhole && row <= there; ++row)
        findings.push_back(RowName(table, row) + ", " + Quoted((*lines)[row]) + ", was added " + ByAnother);
    return findings;
}

} // namespace journal
