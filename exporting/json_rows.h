// SPDX-License-Identifier: MIT
// Rows as JSON objects, one a line.
#pragma once

#include "exporting/table_view.h"

#include <string>
#include <vector>

namespace exporting {

class JsonRows {
public:
    explicit JsonRows(const std::vector<OutColumn>& columns);

    /// Returns the row as a line: numbers are JSON numbers with every digit as it was written, all else is text, and
    /// what is missing or empty is null. A byte that is no UTF-8 becomes U+FFFD: JSON can't have it.
    std::string Line(const std::vector<Cell>& cells);
    /// How many rows had such a byte.
    std::size_t Replaced() const { return Replaced_; }

private:
    std::vector<std::string> Names_; ///< as JSON texts, with the colon
    std::size_t Replaced_ = 0;
};

} // namespace exporting
