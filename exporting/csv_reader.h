// SPDX-License-Identifier: MIT
// Reads comma-separated values.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace exporting {

/// Takes one field of a text: moves `at` behind it and its closing quote. Returns false if a quote stands where none
/// can.
bool TakeCsvField(std::string_view csv, char delimiter, std::size_t& at, std::string& field);

/// Reads one row after the other. Lines end in CR LF or LF. A byte-order mark at the beginning is passed over, and so
/// are empty lines.
class CsvReader {
public:
    /// The text must exist as long as the reader.
    CsvReader(std::string_view csv, char delimiter);

    /// Reads the next row. Returns false behind the last one, and where a quote stands where none can.
    bool Next(std::vector<std::string>& fields);
    std::size_t Line() const { return Line_; } ///< of the first line of the row that was read, from 1
    bool HasFailed() const { return HasFailed_; }
    /// True if it has failed at a carriage return without a line feed, which ends no line.
    bool FailedAtLoneReturn() const { return HasFailed_ && At_ < Csv_.size() && Csv_[At_] == '\r'; }

private:
    bool TakeRow(std::vector<std::string>& fields);

    std::string_view Csv_;
    char Delimiter_;
    std::size_t At_ = 0;
    std::size_t Line_ = 0;
    std::size_t NextLine_ = 1;
    bool HasFailed_ = false;
};

} // namespace exporting
