// SPDX-License-Identifier: MIT
// Two clocks: the machine's, and one that stands still until somebody moves it on.
#pragma once

#include "src/view/platform/device.h"

#include <chrono>
#include <optional>

namespace backends {

using namespace platform;

/// The moment that a text like 2007-03-05T09:30:00 stands for, as whole seconds of a calendar without time zones.
/// Nothing for a text that stands for none.
std::optional<std::int64_t> MomentFromText(const std::string& text);

/// The date picker's form of a date, 2007-03-05; nothing for a text that stands for none.
std::optional<CalendarDate> DateFromText(const std::string& text);

/// The date so many days later, or earlier; the date itself where the calendar of years 1 to 9999 ends.
CalendarDate DaysLater(const CalendarDate& date, std::int32_t count);

/// Both clocks in one: what time of day it is, and a count of milliseconds for the timers that never goes back.
class DeviceClock final : public Clock {
public:
    /// A clock that stands still and starts at a moment.
    explicit DeviceClock(std::int64_t startMoment) : Virtual(true), Start(startMoment * 1000) {}
    /// The machine's.
    DeviceClock();

    bool IsVirtual() const { return Virtual; }
    DateTime Now() const override;
    float TimeOfDay() const override;
    std::int64_t SteadySeconds() const override;

    std::int64_t Milliseconds() const;
    /// Moves a virtual clock on, never back.
    void MoveTo(std::int64_t milliseconds);
    /// Sets what a virtual clock shows; the timers' count goes on as it was.
    void StandAt(std::int64_t moment);
    /// Sets a virtual clock on or back as a person at the machine does: what it shows changes, and nothing else.
    void SetWall(std::int64_t bySeconds) { WallIsOffBy += bySeconds * 1000; }

private:
    std::int64_t LocalMilliseconds() const;  ///< since 1970, by the clock on the wall
    std::int64_t SteadyMilliseconds() const; ///< the same, as it would show if nobody had set it since the start

    bool Virtual = false;
    std::int64_t Start = 0; ///< what the virtual clock showed when its count was 0, in milliseconds since 1970
    std::int64_t Passed = 0;
    std::int64_t WallIsOffBy = 0;
    std::int64_t SteadyStart = 0; ///< of the machine's: what it showed when its count with sleeps was 0
    std::chrono::steady_clock::time_point Begin = std::chrono::steady_clock::now();
};

} // namespace backends
