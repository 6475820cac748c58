// SPDX-License-Identifier: MIT
// Which rows of a record a result belongs to, by the inf table of its driver.
#pragma once

#include "src/view/inf_fields.h"

#include <optional>
#include <vector>

namespace modBLob {

/// The BLOB of a row begins so if a variable fills it.
inline const Text VariableMark = u"dv: ";

struct Target {
    std::int16_t Row = -1; ///< row of grdMain, -1 for none
    Text MatchedType; ///< the type that led to the row; empty for none, and when the result was refused or diverted
};

/// Returns the number of a row. One above 32767 is a run-time failure.
std::int16_t RowNumber(std::int64_t row);

/// Returns the row of the last type that has one; of several rows of one type, the first.
Target FindTarget(const std::vector<modQuorin::InfField>& fields, const std::vector<Text>& types);

/// Returns the row of a variable, or none. A row that names the result's type as well ends the search, and so has
/// precedence over every plain row before it; of several plain rows, the last one is returned.
std::optional<std::int32_t> FindVariableRow(const std::vector<modQuorin::InfField>& fields, const Text& name,
                                            const Text& matchedType);

/// A variable, split at its first `=`; without one, the value is empty.
struct NameAndValue {
    Text Name;
    Text Value;
};
NameAndValue SplitVariable(const Text& variable);

} // namespace modBLob
