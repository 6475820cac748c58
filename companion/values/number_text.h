// SPDX-License-Identifier: MIT
// Numbers that were computed, as texts. One that a table has is shown as it stands there, not by these.
#pragma once

#include <string>

namespace values {

/// Returns the power of ten of the first digit of a finite number: 1 for 24.5, -2 for 0.03, 0 for 0.
int ExponentOf(double value);

/// Returns the number with so many decimal places: "24.50". A full stop, whatever the locale.
std::string FixedText(double value, int decimals);

/// Returns the number with so many decimal places before its exponent, as short as it can be: "1.5e300".
std::string ScientificText(double value, int decimals);

/// Returns the number rounded to a power of ten, 0.01 for -2, without zeros at its end. No more than 15 significant
/// digits: a double has no more.
std::string RoundedText(double value, int place);

} // namespace values
