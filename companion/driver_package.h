// SPDX-License-Identifier: MIT
// The lines of a driver package, as the form would install them.
#pragma once

#include "src/drivers/package_lines.h"
#include "src/view/inf_fields.h"

#include <optional>
#include <vector>

namespace companion {

struct PackageRow {
    std::size_t Line = 0; ///< from 1
    std::vector<Text> Cells;
};

struct DriverPackage {
    std::size_t DriverLine = 0; ///< from 1; 0 if no line counts
    std::optional<modQuorin::DriverRow> Driver;
    std::size_t HeaderLine = 0;
    std::vector<Text> Header;
    std::vector<PackageRow> Rows;
};

DriverPackage ReadPackage(const std::vector<Text>& lines);

/// Returns the index of a column, which is named in any case; of two of the name, the first.
std::optional<std::size_t> ColumnIn(const std::vector<Text>& header, TextView name);

/// Returns the text of a row in a column; empty if the header or the row lacks it.
Text TextIn(const DriverPackage& package, const PackageRow& row, TextView column);

/// Returns where the text of a row in a column begins in its line, from 1; 1 if the header or the row lacks it.
std::size_t PlaceIn(const DriverPackage& package, const PackageRow& row, TextView column);

/// Returns the rows as a download would have them; what can't be loaded counts as empty.
std::vector<modQuorin::InfField> FieldsOf(const DriverPackage& package);

} // namespace companion
