// SPDX-License-Identifier: MIT
// Numbers for programs that calculate with doubles: only those of which no digit gets lost.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace exporting {

/// Returns the double of a number as a cell has it. Nothing if it has more than 15 significant digits, of which a
/// double would keep a part alone, or if it is too large or too near to zero for a spreadsheet.
std::optional<double> ExactDouble(std::string_view number);

/// Returns the number format of a spreadsheet that shows a number with the digits that it was written with, and a
/// negative zero with its sign. With an exponent, the first of these digits stands before the point: "12e3" is
/// "1.2E+4". Nothing for more decimal places than a format can have.
std::optional<std::string> NumberFormatOf(std::string_view number);

/// Returns a number without decimal places and exponent. Nothing for any other, and for what 64 bits can't hold.
std::optional<std::int64_t> ExactInteger(std::string_view number);

} // namespace exporting
