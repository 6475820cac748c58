// SPDX-License-Identifier: MIT
// The rows of a keyed table by the names of its columns, and the lines of a file.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace handover {

/// Column, in upper case, to field. A column that the row is too short for is not there.
using KeyedRow = std::map<std::string, std::string>;

/// Returns the rows of a table, without its header.
std::vector<KeyedRow> KeyedRowsOf(std::string_view table);
/// Returns a field; empty if the row does not have it.
std::string FieldOf(const KeyedRow& row, const std::string& column);

/// Returns the lines as they are, without the line feed that ends each: what makes two files different makes two lines
/// different, but for a last line feed. They are parts of the bytes.
std::vector<std::string_view> RawLines(std::string_view bytes);

} // namespace handover
