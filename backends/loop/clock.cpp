// SPDX-License-Identifier: MIT
#include "backends/loop/clock.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace backends {

namespace {

constexpr std::int64_t MsPerSecond = 1000;
constexpr std::int64_t SecondsPerDay = 86400;

/// Whole seconds of a date and time since 1970, as if there were no time zones; nothing for one that no calendar has.
std::optional<std::int64_t> SecondsOf(std::tm parts) {
    std::tm normal = parts;
    normal.tm_isdst = 0;
    const std::time_t seconds = timegm(&normal);
    const bool exists = normal.tm_year == parts.tm_year && normal.tm_mon == parts.tm_mon &&
                        normal.tm_mday == parts.tm_mday && normal.tm_hour == parts.tm_hour &&
                        normal.tm_min == parts.tm_min && normal.tm_sec == parts.tm_sec;
    return exists ? std::optional<std::int64_t>(seconds) : std::nullopt;
}

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

std::int64_t Count(clockid_t clock) {
    std::timespec now{};
    ::clock_gettime(clock, &now);
    return static_cast<std::int64_t>(now.tv_sec) * MsPerSecond + now.tv_nsec / 1000000;
}

/// What the machine's clock shows here, as a running count.
std::int64_t MachineMilliseconds() {
    const std::int64_t now = Count(CLOCK_REALTIME);
    const auto seconds = static_cast<std::time_t>(now / MsPerSecond);
    std::tm local{};
    localtime_r(&seconds, &local);
    return now + local.tm_gmtoff * MsPerSecond;
}

std::tm PartsFrom(const std::string& text) {
    std::tm parts{};
    std::sscanf(text.c_str(), "%4d-%2d-%2dT%2d:%2d:%2d", &parts.tm_year, &parts.tm_mon, &parts.tm_mday, &parts.tm_hour,
                &parts.tm_min, &parts.tm_sec);
    parts.tm_year -= 1900;
    parts.tm_mon -= 1;
    return parts;
}

} // namespace

std::optional<std::int64_t> MomentFromText(const std::string& text) {
    if (!IsDigits(text, "9999-99-99T99:99:99"))
        return std::nullopt;
    return SecondsOf(PartsFrom(text));
}

std::optional<CalendarDate> DateFromText(const std::string& text) {
    if (!IsDigits(text, "9999-99-99") || !SecondsOf(PartsFrom(text)))
        return std::nullopt;
    const std::tm parts = PartsFrom(text);
    if (parts.tm_year + 1900 < 1)
        return std::nullopt;
    return CalendarDate{parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday};
}

CalendarDate DaysLater(const CalendarDate& date, std::int32_t days) {
    std::tm parts{};
    parts.tm_year = date.Year - 1900;
    parts.tm_mon = date.Month - 1;
    parts.tm_mday = date.Day + days;
    timegm(&parts);
    const CalendarDate later{parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday};
    return later.Year >= 1 && later.Year <= 9999 ? later : date;
}

DateTime DeviceClock::Now() const {
    DateTime now;
    now.WholeSeconds = LocalMilliseconds() / MsPerSecond;
    const auto seconds = static_cast<std::time_t>(now.WholeSeconds);
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    now.Date = {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday};
    now.Hour = parts.tm_hour;
    now.Minute = parts.tm_min;
    now.Second = parts.tm_sec;
    return now;
}

// CLOCK_MONOTONIC stands still while the machine sleeps, and a reading may come right after that.
DeviceClock::DeviceClock() : SteadyStart(MachineMilliseconds() - Count(CLOCK_BOOTTIME)) {
}

float DeviceClock::TimeOfDay() const {
    const std::int64_t ofDay = SteadyMilliseconds() % (SecondsPerDay * MsPerSecond);
    return static_cast<float>(static_cast<double>(ofDay) / MsPerSecond);
}

std::int64_t DeviceClock::SteadySeconds() const {
    return SteadyMilliseconds() / MsPerSecond;
}

std::int64_t DeviceClock::LocalMilliseconds() const {
    return Virtual ? Start + Passed + WallIsOffBy : MachineMilliseconds();
}

std::int64_t DeviceClock::SteadyMilliseconds() const {
    return Virtual ? Start + Passed : SteadyStart + Count(CLOCK_BOOTTIME);
}

std::int64_t DeviceClock::Milliseconds() const {
    if (Virtual)
        return Passed;
    const auto passed = std::chrono::steady_clock::now() - Begin;
    return std::chrono::duration_cast<std::chrono::milliseconds>(passed).count();
}

void DeviceClock::StandAt(std::int64_t moment) {
    Start = moment * MsPerSecond - Passed;
}

void DeviceClock::MoveTo(std::int64_t milliseconds) {
    if (Virtual)
        Passed = std::max(Passed, milliseconds);
}

} // namespace backends
