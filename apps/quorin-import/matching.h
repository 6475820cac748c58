// SPDX-License-Identifier: MIT
// Which column of a CSV file fills which field of a download.
#pragma once

#include "apps/quorin-import/import_options.h"
#include "companion/values/columns.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace importer {

/// What fills a field of the download.
struct FieldSource {
    std::optional<std::size_t> Value = {}; ///< index of the column; none: the field stays empty
    std::optional<std::size_t> Unit = {};  ///< index of a column of units, which are put behind the value
    std::string FixedUnit = {};            ///< put behind each value; empty for none
    values::ColumnKind Kind = values::ColumnKind::Text;
};

struct Matching {
    std::vector<FieldSource> Fields;   ///< one for each field of the download
    std::vector<std::string> Filled;   ///< a line for each field that a column fills
    std::vector<std::string> Unfilled; ///< the fields that nothing fills
    std::vector<std::string> LeftOut;  ///< the columns that fill none
    std::string WhyNot;                ///< why nothing can be imported, as a sentence; empty if it can
};

/// Finds a field for each column: that of its mapping, else the one whose CSVNAME or FIELDNAME it has, without regard
/// to case. The columns of an export go back into their fields: "NAME_unit" and "NAME [UNIT]" to the number of NAME.
/// `fields`: those of the download, in their order.
Matching Match(const std::vector<std::string>& columns, const std::vector<values::Column>& fields,
               const std::vector<Mapping>& maps);

} // namespace importer
