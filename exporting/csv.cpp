// SPDX-License-Identifier: MIT
#include "exporting/csv.h"

#include "companion/values/table_text.h"
#include "exporting/csv_reader.h"

#include <algorithm>

namespace exporting {

namespace {

constexpr std::string_view Mark = "\xEF\xBB\xBF";

} // namespace

CsvWriter::CsvWriter(const CsvForm& form, std::string& out) : Form_(form), Out_(out) {
    for (const char character : {form.Delimiter, '"', '\r', '\n'})
        NeedsQuotes_[static_cast<unsigned char>(character)] = true;
}

void CsvWriter::Header(const std::vector<OutColumn>& columns) {
    if (Form_.Mark)
        Out_ += Mark;
    for (const OutColumn& column : columns)
        Field(column.Name);
    EndRow();
}

void CsvWriter::Row(const std::vector<Cell>& cells) {
    for (const Cell& cell : cells)
        Value(cell);
    EndRow();
}

void CsvWriter::Value(const Cell& cell) {
    if (cell.Type == CellType::Number)
        Number(cell.Text);
    else
        Field(cell.Text);
}

void CsvWriter::Field(std::string_view text) {
    if (Fields_++ > 0)
        Out_ += Form_.Delimiter;
    HasText_ = HasText_ || !text.empty();
    const bool isQuoted = std::any_of(text.begin(), text.end(),
                                      [this](char each) { return NeedsQuotes_[static_cast<unsigned char>(each)]; });
    if (!isQuoted) {
        Out_ += text;
        return;
    }
    Out_ += '"';
    for (const char character : text) {
        if (character == '"')
            Out_ += '"';
        Out_ += character;
    }
    Out_ += '"';
}

void CsvWriter::Number(std::string_view text) {
    if (!Form_.DecimalComma)
        return Field(text);
    std::string number(text);
    std::replace(number.begin(), number.end(), '.', ',');
    Field(number);
}

void CsvWriter::EndRow() {
    if (Fields_ == 1 && !HasText_)
        Out_ += "\"\""; // an empty line would be no row for some readers
    Out_ += Form_.LineEnd;
    Fields_ = 0;
    HasText_ = false;
}

std::string RawCsv(std::string_view table, const CsvForm& form) {
    std::string csv;
    CsvWriter writer(form, csv);
    std::vector<std::string_view> fields;
    while (!table.empty()) {
        const std::size_t end = table.find('\n');
        values::Split(table.substr(0, end), fields);
        for (const std::string_view field : fields)
            writer.Field(field);
        if (end == std::string_view::npos)
            return csv;
        writer.EndRow();
        table.remove_prefix(end + 1);
    }
    return csv;
}

std::optional<std::string> TableOfRawCsv(std::string_view csv, const CsvForm& form) {
    std::string table;
    std::string field;
    for (std::size_t at = 0; at < csv.size();) {
        if (!TakeCsvField(csv, form.Delimiter, at, field))
            return std::nullopt;
        if (field.find_first_of("|\n") != std::string::npos) // they would be several fields or lines of the table
            return std::nullopt;
        table += field;
        if (at == csv.size())
            break;
        if (csv[at] == form.Delimiter) {
            table += '|';
            ++at;
            if (at == csv.size()) // the last field is empty
                break;
        } else if (csv.substr(at, form.LineEnd.size()) == form.LineEnd) {
            table += '\n';
            at += form.LineEnd.size();
        } else {
            return std::nullopt;
        }
    }
    return table;
}

} // namespace exporting
