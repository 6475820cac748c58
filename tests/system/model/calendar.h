// SPDX-License-Identifier: MIT
// The calendar of a shift: milliseconds since 1970 without time zones, and their forms as texts.
#pragma once

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>

namespace shift {

using Moment = std::int64_t;

inline constexpr Moment Second = 1000;
inline constexpr Moment Hour = 3600 * Second;
inline constexpr Moment Day = 24 * Hour;

inline std::chrono::year_month_day DateOf(Moment moment) {
    return std::chrono::sys_days(std::chrono::days(moment / Day));
}

inline std::string Printed(const char* form, int a, int b, int c = 0) {
    char text[64];
    std::snprintf(text, sizeof text, form, a, b, c);
    return text;
}

/// As 05/03/2007, the form of the cells.
inline std::string DateText(std::chrono::year_month_day date) {
    return Printed("%02d/%02d/%d", static_cast<int>(unsigned(date.day())), static_cast<int>(unsigned(date.month())),
                   int(date.year()));
}

/// As 20070305, the form of the register.
inline std::string DateDigits(std::chrono::year_month_day date) {
    return Printed("%04d%02d%02d", int(date.year()), static_cast<int>(unsigned(date.month())),
                   static_cast<int>(unsigned(date.day())));
}

inline std::string TimeText(Moment moment) {
    return Printed("%02d:%02d", static_cast<int>(moment % Day / Hour), static_cast<int>(moment % Hour / 60000));
}

/// As 2007-03-05T09:30:00.
inline std::string MomentText(Moment moment) {
    const std::string digits = DateDigits(DateOf(moment));
    return digits.substr(0, 4) + "-" + digits.substr(4, 2) + "-" + digits.substr(6) + "T" + TimeText(moment) +
           Printed(":%02d", static_cast<int>(moment % 60000 / Second), 0);
}

/// Seconds since midnight, as the program counts them.
inline float TimeOfDay(Moment moment) {
    return static_cast<float>(static_cast<double>(moment % Day) / 1000.0);
}

} // namespace shift
