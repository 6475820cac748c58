// SPDX-License-Identifier: MIT
// Numbers with leading zeros, for dates, times and file names.
#pragma once

#include "src/text/text.h"

namespace modStringTools {

/// Returns the text with leading zeros, at least `width` characters long. A longer text is not changed.
Text WithZeros(const Text& text, std::int32_t width);

/// Returns a number with two digits at least, such as a day, a month or an hour: "07", "12".
Text TwoDigits(std::int32_t number);

} // namespace modStringTools
