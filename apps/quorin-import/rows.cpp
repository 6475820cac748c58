// SPDX-License-Identifier: MIT
#include "apps/quorin-import/rows.h"

#include "companion/values/moments.h"
#include "companion/values/quantity.h"
#include "src/text/utf8.h"

#include <algorithm>

namespace importer {

namespace {

constexpr std::size_t MostNamed = 20;
constexpr std::string_view BrokenBar = "\xC2\xA6";

std::string CellAt(const std::vector<std::string>& cells, std::size_t place) {
    return place < cells.size() ? cells[place] : std::string();
}

} // namespace

RowMaker::RowMaker(const Matching& matching, const std::vector<std::string>& columns)
    : Matching_(matching), Columns_(columns) {
}

std::string RowMaker::Row(const std::vector<std::string>& cells, std::size_t line) {
    Line_ = line;
    if (cells.size() != Columns_.size())
        LookAtLength(cells);
    std::string row;
    for (const FieldSource& source : Matching_.Fields)
        row += (&source == &Matching_.Fields.front() ? "" : "|") + Fitting(FieldOf(source, cells));
    return row;
}

std::vector<std::string> RowMaker::Odd() const {
    std::vector<std::string> odd = Odd_;
    if (OddCount_ > MostNamed)
        odd.push_back("and " + std::to_string(OddCount_ - MostNamed) + " more");
    return odd;
}

std::string RowMaker::FieldOf(const FieldSource& source, const std::vector<std::string>& cells) {
    if (!source.Value)
        return {};
    std::string value = CellAt(cells, *source.Value);
    if (source.Kind == values::ColumnKind::Date)
        value = DateOf(value);
    const std::string unit = source.Unit ? CellAt(cells, *source.Unit) : source.FixedUnit;
    if (unit.empty() || value.empty())
        return source.Unit ? value + unit : value;
    const auto quantity = values::QuantityOf(value, values::DecimalSign::Either);
    if (!quantity || quantity->Unit.empty())
        return value + " " + unit;
    if (quantity->Unit != unit)
        Tell("\"" + value + "\" has a unit already, which stays: \"" + unit + "\" is left out");
    return value;
}

std::string RowMaker::DateOf(const std::string& cell) {
    if (const auto date = values::CellDate(cell))
        return *date;
    if (!cell.empty() && !values::IsoDate(cell))
        Tell("\"" + cell + "\" is no date that the form reads: it stays as it is");
    return cell;
}

/// Returns a text as a table can have it.
std::string RowMaker::Fitting(const std::string& text) {
    if (!modStringTools::IsUtf8(text))
        Tell("a value has bytes that are no UTF-8, which stay as they are: save the file as UTF-8");
    if (text.find_first_of(std::string_view("|\r\n\0", 4)) == text.npos)
        return text;
    std::string fitting;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '|')
            fitting += BrokenBar;
        else if (text[i] != '\r' && text[i] != '\n' && text[i] != '\0')
            fitting += text[i];
        else if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n')
            fitting += ' '; // one for CR LF
    }
    if (text.find('|') != text.npos)
        Tell("a value has a bar, which separates the fields of a table: a broken bar stands for it");
    if (text.find_first_of(std::string_view("\r\n\0", 3)) != text.npos)
        Tell("a value has a line end or a NUL: a blank stands for it");
    return fitting;
}

void RowMaker::LookAtLength(const std::vector<std::string>& cells) {
    const std::string count = std::to_string(cells.size()) + " of " + std::to_string(Columns_.size()) + " values";
    if (cells.size() < Columns_.size())
        Tell(count + ": the others are empty");
    else
        Tell(std::to_string(cells.size()) + " values under " + std::to_string(Columns_.size()) +
             " columns: the others are left out");
}

void RowMaker::Tell(const std::string& what) {
    if (++OddCount_ <= MostNamed)
        Odd_.push_back("line " + std::to_string(Line_) + ": " + what);
}

} // namespace importer
