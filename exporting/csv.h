// SPDX-License-Identifier: MIT
// Comma-separated values, RFC 4180.
#pragma once

#include "exporting/table_view.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace exporting {

struct CsvForm {
    char Delimiter = ',';
    bool DecimalComma = false;    ///< of numbers: "24,5"
    bool Mark = false;            ///< begins with a byte-order mark, by which spreadsheets know UTF-8
    std::string LineEnd = "\r\n"; ///< or "\n"
};

/// Writes texts into lines. A text is put into quotes only if it has the delimiter, a quote, a CR or a LF in it. No
/// text is changed otherwise: a value such as "=1+2" stays what it is.
class CsvWriter {
public:
    CsvWriter(const CsvForm& form, std::string& out);

    void Header(const std::vector<OutColumn>& columns);
    void Row(const std::vector<Cell>& cells);
    void Value(const Cell& cell);
    void Field(std::string_view text);
    void EndRow();

private:
    void Number(std::string_view text);

    const CsvForm& Form_;
    std::string& Out_;
    bool NeedsQuotes_[256] = {};
    std::size_t Fields_ = 0; ///< of the row
    bool HasText_ = false;   ///< some field of the row is not empty
};

/// Returns the bytes of a table as CSV with nothing told apart: each line a row, each field between bars a field, even
/// a CR at the end of a line. From it, TableOfRawCsv makes the same bytes again, whatever they are.
std::string RawCsv(std::string_view table, const CsvForm& form);

/// Returns the table of which RawCsv was made; nothing if the text is none: a quote within a field or without its end,
/// or a bar or line feed within a field.
std::optional<std::string> TableOfRawCsv(std::string_view csv, const CsvForm& form);

} // namespace exporting
