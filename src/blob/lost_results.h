// SPDX-License-Identifier: MIT
// Whether what a result has put into the record on screen can reach the file with the next save.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace modBLob {

/// Rows of grdMain that a result was put into.
struct PutRows {
    std::int32_t Value = -1;          ///< its value's, -1 for none
    std::vector<std::int32_t> Others; ///< of its variables and formulas
};

/// Tells of a result that the record's row in the file has no field for, or whose value something else has taken the
/// place of. The tone has said that it was taken.
void TellWhatIsLost(const PutRows& rows, const Text& valueAndUnit);

/// The name of a row's field.
Text FieldName(std::int32_t row);

} // namespace modBLob
