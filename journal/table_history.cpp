// SPDX-License-Identifier: MIT
#include "journal/table_history.h"

namespace journal {

namespace {

constexpr std::size_t LargestRow = 10'000'000; // a line of the journal may be damaged

std::string_view WithoutEnding(std::string_view name) {
    constexpr std::string_view Ending = ".txt";
    return name.ends_with(Ending) ? name.substr(0, name.size() - Ending.size()) : name;
}

} // namespace

bool TableHistory::Reach(std::size_t row) {
    if (row < 1 || row > LargestRow)
        return false;
    if (Rows_.size() < row)
        Rows_.resize(row, None);
    return true;
}

TableHistory::Record TableHistory::Named(std::size_t row) {
    if (!Reach(row))
        return None;
    Record& record = Rows_[row - 1];
    if (record == None)
        record = Next_++;
    return record;
}

TableHistory::Record TableHistory::Added(std::size_t row) {
    if (row > 1 ? !Reach(row - 1) : row < 1)
        return None;
    Rows_.insert(Rows_.begin() + static_cast<std::ptrdiff_t>(row - 1), Next_);
    return Next_++;
}

TableHistory::Record TableHistory::Deleted(std::size_t row) {
    const Record record = Named(row);
    if (record != None)
        Rows_.erase(Rows_.begin() + static_cast<std::ptrdiff_t>(row - 1));
    return record;
}

bool IsSameTable(std::string_view one, std::string_view other) {
    return WithoutEnding(one) == WithoutEnding(other);
}

bool IsRegister(std::string_view file) {
    return IsSameTable(file, "qrnctrl");
}

std::string FileOfRegisterLine(std::string_view line) {
    const std::size_t bar = line.find('|');
    if (bar == std::string_view::npos)
        return {};
    const std::string_view rest = line.substr(bar + 1);
    return std::string(rest.substr(0, rest.find('|')));
}

} // namespace journal
