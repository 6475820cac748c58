// SPDX-License-Identifier: MIT
// The lines and fields of a table, as parts of the bytes of its file.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace values {

/// Splits a line at its bars. An empty line is one empty field.
void Split(std::string_view line, std::vector<std::string_view>& fields);

/// Goes through the lines of a file: they end in LF or CR LF, which are no part of them, nor is a byte-order mark.
class LineWalk {
public:
    explicit LineWalk(std::string_view bytes);
    /// Moves to the next line. Returns false behind the last one.
    bool Next();
    std::string_view Line() const { return Line_; }
    std::size_t Number() const { return Number_; } ///< from 1

private:
    std::string_view Rest_;
    std::string_view Line_;
    std::size_t Number_ = 0;
};

/// Returns the number of rows of a table, without its header.
std::size_t RecordsOf(std::string_view table);

} // namespace values
