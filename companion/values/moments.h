// SPDX-License-Identifier: MIT
// The dates and times of a table as ISO 8601 writes them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace values {

/// Returns "2026-11-21" for a date as the form reads it from a cell, "21/11/2026"; nothing for any other text.
std::optional<std::string> IsoDate(std::string_view cell);

/// Returns "21/11/2026" for "2026-11-21", as the form's calendar writes it; nothing for any other text, or a day that
/// no calendar has.
std::optional<std::string> CellDate(std::string_view iso);

/// Returns "09:30" or "09:30:05" for a time of one or two digits each, "9:30", with the zone behind it; nothing for any
/// other text. `zone`: "Z" or "+01:00"; empty for none.
std::optional<std::string> IsoTime(std::string_view cell, std::string_view zone);

/// True for "Z" and for "+HH:MM" or "-HH:MM", up to 14 hours.
bool IsZone(std::string_view zone);

} // namespace values
