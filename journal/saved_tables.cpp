// SPDX-License-Identifier: MIT
#include "journal/saved_tables.h"

#include "journal/glance.h"
#include "journal/reading_words.h"
#include "journal/table_history.h"

#include <algorithm>
#include <utility>

namespace journal {

namespace {

constexpr std::size_t LargestRow = 10'000'000; // a line of the journal may be damaged
constexpr const char* ByAnother = "by another tool, or by a program that kept no journal";

/// Returns a line as the journal and a table have it in common: the journal replaces what is not UTF-8.
std::string Common(const std::string& line) {
    return Line(InARow(line)).dump(-1, ' ', false, Line::error_handler_t::replace);
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
                                TimeText(TextIn(line, "time")));
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
        Findings_.push_back(RowName(table, row) + " was changed " + ByAnother + ", between " + TimeText(known->Time) +
                            " and " + TimeText(TextIn(line, "time")) + ": it was saved as " + Quoted(known->Line) +
                            " and found as " + Quoted(old));
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

namespace {

/// The rows of a table by the journal and those that it has, which are lines from the second on.
class Comparison {
public:
    Comparison(const SavedTable& table, const std::vector<std::string>& lines);
    std::vector<std::string> Findings();

private:
    static constexpr std::size_t MostCells = 16'000'000; // a table that is another one altogether is not worth more

    bool IsSame(std::size_t row, std::size_t line) const;
    bool IsKnown(std::size_t row, std::size_t line) const { return Rows_[row] && IsSame(row, line); }
    std::size_t Matched(std::size_t row, std::size_t line);
    bool IsAsSaved() const;
    bool AreExchanged();
    void Align();
    void TakeGap(std::size_t row, std::size_t line);
    std::string Saved(std::size_t row) const;
    std::size_t& Cell(std::size_t row, std::size_t line) {
        return Cells_[(row - Begin_) * (FoundEnd_ + 1 - Begin_) + line - Begin_];
    }

    const SavedTable& Table_;
    const std::vector<std::string>& Lines_;
    std::vector<std::optional<std::string>> Rows_; ///< as a table and the journal have them in common
    std::vector<std::string> Found_;
    std::size_t Begin_ = 0; ///< the rows before are the same ones
    std::size_t RowsEnd_;   ///< and those from here on, by the journal
    std::size_t FoundEnd_;  ///< and in the table
    std::size_t Row_ = 0;   ///< the next one to align
    std::size_t Line_ = 0;
    std::vector<std::size_t> Cells_; ///< how good the best alignment of the rows from here on is
    std::vector<std::string> Findings_;
};

Comparison::Comparison(const SavedTable& table, const std::vector<std::string>& lines) : Table_(table), Lines_(lines) {
    for (const auto& row : table.Rows)
        Rows_.push_back(row ? std::optional(Common(row->Line)) : std::nullopt);
    for (std::size_t i = 1; i < lines.size(); ++i)
        Found_.push_back(Common(lines[i]));
    if (!table.IsWhole) // the journal may not know the last ones
        Rows_.resize(std::max(Rows_.size(), Found_.size()));
    RowsEnd_ = Rows_.size();
    FoundEnd_ = Found_.size();
}

/// A row that the journal does not know may be any.
bool Comparison::IsSame(std::size_t row, std::size_t line) const {
    return !Rows_[row] || *Rows_[row] == Found_[line];
}

std::string Comparison::Saved(std::size_t row) const {
    const std::string name = RowName(Table_, row + 1);
    if (!Rows_[row])
        return name;
    return name + ", saved " + TimeText(Table_.Rows[row]->Time) + " as " + Quoted(Table_.Rows[row]->Line);
}

bool Comparison::AreExchanged() {
    if (RowsEnd_ != FoundEnd_ || RowsEnd_ < Begin_ + 2)
        return false;
    const std::size_t last = RowsEnd_ - 1;
    for (std::size_t i = Begin_ + 1; i < last; ++i) {
        if (!IsSame(i, i))
            return false;
    }
    if (!IsKnown(Begin_, last) || !IsKnown(last, Begin_))
        return false;
    Findings_.push_back(Table_.Name + ", records " + std::to_string(Begin_ + 1) + " and " + std::to_string(last + 1) +
                        " were exchanged " + ByAnother);
    return true;
}

/// Rows up to these ones are not the same: as many as there are on both sides were changed.
void Comparison::TakeGap(std::size_t row, std::size_t line) {
    for (; Row_ < row && Line_ < line; ++Row_, ++Line_)
        Findings_.push_back(Saved(Row_) + ", is " + Quoted(Lines_[Line_ + 1]) + " now: it was changed " + ByAnother);
    for (; Row_ < std::min(row, Table_.Rows.size()); ++Row_)
        Findings_.push_back(Saved(Row_) + ", is missing: it was removed " + ByAnother +
                            (line < Found_.size() ? "; the following moved up" : ""));
    const bool isKnown = Table_.IsWhole || row < Rows_.size(); // or the journal may not know the last ones
    for (; isKnown && Line_ < line; ++Line_)
        Findings_.push_back(RowName(Table_, Line_ + 1) + ", " + Quoted(Lines_[Line_ + 1]) + ", was added " + ByAnother +
                            (row < Rows_.size() ? "; the following moved down" : ""));
}

/// Returns how good an alignment is that has these as one row. One with a row that the journal knows is better, but two
/// rows are better than one.
std::size_t Comparison::Matched(std::size_t row, std::size_t line) {
    return IsSame(row, line) ? Cell(row + 1, line + 1) + (Rows_[row] ? 3 : 2) : 0;
}

bool Comparison::IsAsSaved() const {
    if (Rows_.size() != Found_.size())
        return false;
    for (std::size_t i = 0; i < Rows_.size(); ++i) {
        if (!IsSame(i, i))
            return false;
    }
    return true;
}

/// Finds the longest sequence of rows that are the same, and what is between them.
void Comparison::Align() {
    Cells_.assign((RowsEnd_ + 1 - Begin_) * (FoundEnd_ + 1 - Begin_), 0);
    for (std::size_t row = RowsEnd_; row-- > Begin_;) {
        for (std::size_t line = FoundEnd_; line-- > Begin_;)
            Cell(row, line) = std::max({Matched(row, line), Cell(row + 1, line), Cell(row, line + 1)});
    }
    std::size_t row = Row_ = Begin_;
    std::size_t line = Line_ = Begin_;
    while (row < RowsEnd_ && line < FoundEnd_) {
        if (IsSame(row, line) && Cell(row, line) == Matched(row, line)) {
            TakeGap(row, line);
            Row_ = ++row;
            Line_ = ++line;
        } else if (Cell(row, line) == Cell(row + 1, line)) {
            ++row;
        } else {
            ++line;
        }
    }
    TakeGap(RowsEnd_, FoundEnd_);
}

std::vector<std::string> Comparison::Findings() {
    if (IsAsSaved())
        return {};
    while (Begin_ < std::min(RowsEnd_, FoundEnd_) && IsKnown(Begin_, Begin_))
        ++Begin_;
    while (std::min(RowsEnd_, FoundEnd_) > Begin_ && IsKnown(RowsEnd_ - 1, FoundEnd_ - 1)) {
        --RowsEnd_;
        --FoundEnd_;
    }
    const std::size_t rows = RowsEnd_ - Begin_;
    const std::size_t lines = FoundEnd_ - Begin_;
    if (rows != 0 && lines > MostCells / rows)
        return {Table_.Name + ", " + std::to_string(rows) + " records from record " + std::to_string(Begin_ + 1) +
                " on are not as they were saved: they were changed " + ByAnother};
    if (!AreExchanged())
        Align();
    return std::move(Findings_);
}

} // namespace

std::vector<std::string> Compare(const SavedTable& table, const std::optional<std::vector<std::string>>& lines) {
    if (!table.DeletedAt.empty())
        return {};
    if (!lines)
        return table.Rows.empty() ? std::vector<std::string>() : std::vector{table.Name + ": the file is missing"};
    return Comparison(table, *lines).Findings();
}

} // namespace journal
