// SPDX-License-Identifier: MIT
// The columns of a download as other tools get them: names and kinds, from the inf table of its driver.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace values {

enum class ColumnKind {
    Text,     ///< stays as it is
    Measured, ///< filled by a result of the instrument: a number and a unit
    Date,
    Time,
};

/// What the inf table says of a field.
struct FieldRow {
    std::string Field;   ///< FIELDNAME
    std::string CsvName; ///< CSVNAME; may be empty
    ColumnKind Kind = ColumnKind::Text;
    bool IsShown = true; ///< on the record screen
};

/// Reads the lines of an inf table, the header first. Cells that are missing are empty.
std::vector<FieldRow> FieldRowsOf(const std::vector<std::string_view>& lines);

/// True if two names of columns are the same, without regard to case.
bool IsName(std::string_view one, std::string_view other);

/// Returns the index of the column that a person names by its number: 2 for "|3", the third of the table. Nothing for
/// any other text. No column is called so, because a bar separates the names.
std::optional<std::size_t> NumberedColumn(std::string_view name);

struct Column {
    std::string Field; ///< its name in the header of the download
    std::string Name;  ///< for other tools; no two columns have the same
    ColumnKind Kind = ColumnKind::Text;
    bool IsShown = true;
    bool IsKnown = false; ///< the driver has such a field
};

/// Returns a column for each cell of a download's header. The header is of the day on which the download was made, the
/// inf table may have changed since: they are matched by names without regard to case, not by position. The name is
/// CSVNAME, else FIELDNAME, else "column N"; a second one of a name gets "_2".
std::vector<Column> ColumnsOf(const std::vector<std::string_view>& header, const std::vector<FieldRow>& fields);

} // namespace values
