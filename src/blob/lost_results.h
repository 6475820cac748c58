// SPDX-License-Identifier: MIT
// Checks whether the next save can store what a result has put into the record on screen.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/onlooker.h"

#include <optional>
#include <vector>

namespace modBLob {

/// The rows of grdMain that a result was put into.
struct PutRows {
    std::int32_t Value = -1;          ///< the row of its value, -1 for none
    std::vector<std::int32_t> Others; ///< the rows of its variables and of formulas
};

/// Reports a result if the record's row in the file has no field for it, or if something else has replaced its value.
/// The tone has already signalled that the result was taken. Returns why its value is lost, if it is.
std::optional<platform::ReadingLoss> TellWhatIsLost(const PutRows& rows, const Text& valueAndUnit);

/// Returns the name of a row's field.
Text FieldName(std::int32_t row);

} // namespace modBLob
