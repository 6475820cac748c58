// SPDX-License-Identifier: MIT
#include "src/view/date_text.h"

#include "src/text/digits.h"
#include "src/text/ranges.h"

#include <algorithm>
#include <chrono>

namespace modPDAUI {

using platform::CalendarDate;

namespace {

Text PartOf(const Text& text, std::int32_t number) {
    Text part;
    modStringTools::GetToken(text + u"/", u"/", number, part);
    return part;
}

bool IsCalendarDate(const CalendarDate& date) {
    if (date.Year < 1 || date.Month < 1 || date.Month > 12 || date.Day < 1)
        return false;
    // The years of std::chrono end at 32767, but the calendar repeats itself after 400 of them.
    const std::chrono::year_month_day_last last =
        std::chrono::year(date.Year % 400) / std::chrono::month(static_cast<unsigned>(date.Month)) / std::chrono::last;
    return static_cast<unsigned>(date.Day) <= static_cast<unsigned>(last.day());
}

/// Returns a part as a number; none if it has a sign.
std::optional<std::int32_t> NumberOfDate(const Text& text) {
    return text.find_first_of(u"+-") == Text::npos ? modStringTools::NumberFromText(text) : std::nullopt;
}

/// Two digits mean the years from 1930 to 2029.
std::optional<std::int32_t> YearOfDate(const Text& text) {
    constexpr std::int32_t Century = 100, Pivot = 30;
    const auto year = NumberOfDate(text);
    const auto blanks = std::count(text.begin(), text.end(), u' ');
    if (!year || static_cast<std::ptrdiff_t>(text.size()) - blanks != 2)
        return year;
    return *year + (*year < Pivot ? 20 * Century : 19 * Century);
}

} // namespace

std::optional<CalendarDate> DateOf(const Text& text) {
    const CalendarDate date{YearOfDate(PartOf(text, 3)).value_or(0), NumberOfDate(PartOf(text, 2)).value_or(0),
                            NumberOfDate(PartOf(text, 1)).value_or(0)};
    return IsCalendarDate(date) && PartOf(text, 4).empty() ? std::optional(date) : std::nullopt;
}

Text TextOfDate(const CalendarDate& date) {
    using modStringTools::TwoDigits;
    return TwoDigits(date.Day) + u"/" + TwoDigits(date.Month) + u"/" + modStringTools::NumberText(date.Year);
}

} // namespace modPDAUI
