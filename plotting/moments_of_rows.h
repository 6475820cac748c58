// SPDX-License-Identifier: MIT
// The moments of rows, from a column of dates and one of times.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace plotting {

constexpr double SecondsADay = 86400;

/// Returns the seconds from 1970 to the beginning of a day as values::IsoDate writes it. There is no zone: each day has
/// as many seconds as the other.
double SecondsOfDate(const std::string& isoDate);

/// Returns the seconds since midnight of a time as values::IsoTime writes it.
double SecondsOfTime(const std::string& isoTime);

/// Reads the cells of one row after the other. Dates come in runs: the last one read is kept.
class MomentReader {
public:
    /// Returns the moment in seconds, nothing if a cell can't be read.
    std::optional<double> Moment(std::string_view date, std::string_view time);
    std::optional<double> Day(std::string_view date);
    /// Returns seconds since the first midnight: a time that is more than twelve hours earlier than the one before it
    /// is of the next day.
    std::optional<double> TimeAlone(std::string_view time);

private:
    std::string LastDate_;
    std::optional<double> LastDay_;
    double Days_ = 0;
    double LastTime_ = 0;
};

} // namespace plotting
