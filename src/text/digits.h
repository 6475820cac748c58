// SPDX-License-Identifier: MIT
// Numbers with zeros in front of them, as dates, times and file names have them.
#pragma once

#include "src/text/text.h"

namespace modStringTools {

/// Puts zeros in front of a text until it is `width` characters long. A longer one stays as it is.
Text WithZeros(const Text& text, std::int32_t width);

/// A day, a month, an hour: "07", "12".
Text TwoDigits(std::int32_t number);

} // namespace modStringTools
