// SPDX-License-Identifier: MIT
#include "plotting/moments_of_rows.h"

#include "companion/values/moments.h"

#include <chrono>
#include <cstdlib>

namespace plotting {

namespace {

int NumberAt(const std::string& text, std::size_t at, std::size_t length) {
    return at < text.size() ? std::atoi(text.substr(at, length).c_str()) : 0;
}

} // namespace

double SecondsOfDate(const std::string& isoDate) {
    using namespace std::chrono;
    const year_month_day date(year(NumberAt(isoDate, 0, 4)), month(static_cast<unsigned>(NumberAt(isoDate, 5, 2))),
                              day(static_cast<unsigned>(NumberAt(isoDate, 8, 2))));
    return static_cast<double>(sys_days(date).time_since_epoch().count()) * SecondsADay;
}

double SecondsOfTime(const std::string& isoTime) {
    return NumberAt(isoTime, 0, 2) * 3600 + NumberAt(isoTime, 3, 2) * 60 + NumberAt(isoTime, 6, 2);
}

std::optional<double> MomentReader::Day(std::string_view date) {
    if (!LastDay_ || LastDate_ != date) {
        const auto iso = values::IsoDate(date);
        LastDay_ = iso ? std::optional(SecondsOfDate(*iso)) : std::nullopt;
        LastDate_ = date;
    }
    return LastDay_;
}

std::optional<double> MomentReader::Moment(std::string_view date, std::string_view time) {
    const auto day = Day(date);
    const auto iso = values::IsoTime(time, "");
    return day && iso ? std::optional(*day + SecondsOfTime(*iso)) : std::nullopt;
}

std::optional<double> MomentReader::TimeAlone(std::string_view time) {
    const auto iso = values::IsoTime(time, "");
    if (!iso)
        return std::nullopt;
    const double seconds = SecondsOfTime(*iso);
    if (seconds < LastTime_ - SecondsADay / 2)
        ++Days_;
    LastTime_ = seconds;
    return Days_ * SecondsADay + seconds;
}

} // namespace plotting
