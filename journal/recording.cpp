// SPDX-License-Identifier: MIT
#include "journal/recording.h"

#include "journal/glance.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace journal {

namespace {

/// Returns the seconds since 1970 of a time of the journal; 0 if it is none.
std::int64_t SecondOf(const std::string& time) {
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (std::sscanf(time.c_str(), "%4d-%2u-%2uT%2d:%2d:%2d", &year, &month, &day, &hour, &minute, &second) != 6)
        return 0;
    const std::chrono::sys_days date(std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day));
    return date.time_since_epoch().count() * std::int64_t{86400} + hour * 3600 + minute * 60 + second;
}

} // namespace

std::int64_t RecordingTimes::SinceLast(const Line& line) {
    const std::int64_t ms = NumberIn(line, "ms");
    const std::int64_t second = SecondOf(TextIn(line, "time"));
    const std::int64_t passed = IsSameRun_ ? ms - LastMs_ : (second - LastSecond_) * 1000;
    const std::int64_t since = IsFirst_ ? 0 : std::max<std::int64_t>(passed, 0);
    LastMs_ = ms;
    LastSecond_ = second;
    IsFirst_ = false;
    IsSameRun_ = true;
    return since;
}

std::string RecordingLine(std::int64_t milliseconds, std::string_view bytes) {
    std::string line = std::to_string(milliseconds) + " ";
    for (const char each : bytes) {
        const auto byte = static_cast<unsigned char>(each);
        if (byte >= ' ' && byte < 0x7F && byte != '%') {
            line += each;
            continue;
        }
        line += '%';
        line += "0123456789ABCDEF"[byte >> 4U];
        line += "0123456789ABCDEF"[byte & 0xFU];
    }
    return line + "\n";
}

} // namespace journal
