// SPDX-License-Identifier: MIT
#include "backends/loop/clock.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace backends {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::sys_seconds;
using std::chrono::year_month_day;

namespace {

constexpr std::int64_t MsPerSecond = 1000;
constexpr std::int64_t SecondsPerDay = 86400;

bool IsDigits(const std::string& text, const char* form) {
    if (text.size() != std::char_traits<char>::length(form))
        return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool digit = text[i] >= '0' && text[i] <= '9';
        if (form[i] == '9' ? !digit : text[i] != form[i])
            return false;
    }
    return true;
}

/// The numbers of a text like 2007-03-05T09:30:00, or of the first part of one.
struct Numbers {
    int Year = 0, Month = 0, Day = 0, Hour = 0, Minute = 0, Second = 0;
};

Numbers NumbersIn(const std::string& text) {
    Numbers read;
    std::sscanf(text.c_str(), "%4d-%2d-%2dT%2d:%2d:%2d", &read.Year, &read.Month, &read.Day, &read.Hour, &read.Minute,
                &read.Second);
    return read;
}

/// The result may be a date that does not exist.
year_month_day DateOf(int year, int month, int day) {
    return std::chrono::year(year) / month / day;
}

CalendarDate DateFrom(year_month_day date) {
    return {static_cast<int>(date.year()), static_cast<std::int32_t>(static_cast<unsigned>(date.month())),
            static_cast<std::int32_t>(static_cast<unsigned>(date.day()))};
}

} // namespace

std::optional<std::int64_t> MomentFromText(const std::string& text) {
    if (!IsDigits(text, "9999-99-99T99:99:99"))
        return std::nullopt;
    const Numbers read = NumbersIn(text);
    const year_month_day date = DateOf(read.Year, read.Month, read.Day);
    if (!date.ok() || read.Hour > 23 || read.Minute > 59 || read.Second > 59)
        return std::nullopt;
    const sys_seconds moment = sys_days(date) + hours(read.Hour) + minutes(read.Minute) + seconds(read.Second);
    return moment.time_since_epoch().count();
}

std::optional<CalendarDate> DateFromText(const std::string& text) {
    if (!IsDigits(text, "9999-99-99"))
        return std::nullopt;
    const Numbers read = NumbersIn(text);
    const year_month_day date = DateOf(read.Year, read.Month, read.Day);
    return date.ok() && read.Year >= 1 ? std::optional(DateFrom(date)) : std::nullopt;
}

std::string TextOfMoment(const DateTime& moment) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%sT%02d:%02d:%02d", TextOfDate(moment.Date).c_str(), moment.Hour,
                  moment.Minute, moment.Second);
    return text.data();
}

std::string TextOfDate(const CalendarDate& date) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", date.Year, date.Month, date.Day);
    return text.data();
}

CalendarDate DaysLater(const CalendarDate& date, std::int32_t count) {
    const sys_days later = sys_days(DateOf(date.Year, date.Month, date.Day)) + days(count);
    const bool inCalendar = later >= sys_days(DateOf(1, 1, 1)) && later <= sys_days(DateOf(9999, 12, 31));
    return inCalendar ? DateFrom(later) : date;
}

DateTime DeviceClock::Now() const {
    DateTime now;
    now.WholeSeconds = LocalMilliseconds() / MsPerSecond;
    const sys_seconds moment{seconds(now.WholeSeconds)};
    const sys_days day = std::chrono::floor<days>(moment);
    const std::chrono::hh_mm_ss time(moment - day);
    now.Date = DateFrom(day);
    now.Hour = static_cast<std::int32_t>(time.hours().count());
    now.Minute = static_cast<std::int32_t>(time.minutes().count());
    now.Second = static_cast<std::int32_t>(time.seconds().count());
    return now;
}

DeviceClock::DeviceClock(MachineTime machine) : Machine_(machine), SteadyStart_(machine.Local() - machine.Steady()) {
}

float DeviceClock::TimeOfDay() const {
    const std::int64_t ofDay = SteadyMilliseconds() % (SecondsPerDay * MsPerSecond);
    return static_cast<float>(static_cast<double>(ofDay) / MsPerSecond);
}

std::int64_t DeviceClock::SteadySeconds() const {
    return SteadyMilliseconds() / MsPerSecond;
}

std::int64_t DeviceClock::LocalMilliseconds() const {
    return IsVirtual() ? Start_ + Passed_ + WallIsOffBy_ : Machine_.Local();
}

std::int64_t DeviceClock::SteadyMilliseconds() const {
    return IsVirtual() ? Start_ + Passed_ : SteadyStart_ + Machine_.Steady();
}

std::int64_t DeviceClock::Milliseconds() const {
    if (IsVirtual())
        return Passed_;
    const auto passed = std::chrono::steady_clock::now() - Begin_;
    return std::chrono::duration_cast<std::chrono::milliseconds>(passed).count();
}

void DeviceClock::StandAt(std::int64_t moment) {
    Start_ = moment * MsPerSecond - Passed_;
}

void DeviceClock::MoveTo(std::int64_t milliseconds) {
    if (IsVirtual())
        Passed_ = std::max(Passed_, milliseconds);
}

} // namespace backends
