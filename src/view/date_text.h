// SPDX-License-Identifier: MIT
// The dates of cells: day/month/year.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/controls.h"

#include <optional>

namespace modPDAUI {

/// Reads a date such as "05/03/2007", with blanks around its numbers or none. A year of two digits is 1930 to 2029.
/// Returns nothing for any other text.
std::optional<platform::CalendarDate> DateOf(const Text& text);

/// Returns "05/03/2007": two digits each for day and month, and the year in full.
Text TextOfDate(const platform::CalendarDate& date);

} // namespace modPDAUI
