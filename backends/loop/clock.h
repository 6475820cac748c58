// SPDX-License-Identifier: MIT
// Two clocks: the machine's, and a virtual one that stands still until it is moved on.
#pragma once

#include "src/view/platform/device.h"

#include <chrono>
#include <optional>

namespace backends {

using namespace platform;

/// Returns the moment that a text like 2007-03-05T09:30:00 means, in whole seconds since 1970, without time zones;
/// nothing if the text is not a valid moment.
std::optional<std::int64_t> MomentFromText(const std::string& text);

/// Reads a date in the date picker's form, 2007-03-05. Returns nothing if the text is not a valid date.
std::optional<CalendarDate> DateFromText(const std::string& text);

/// Return the texts that these two read.
std::string TextOfMoment(const DateTime& moment);
std::string TextOfDate(const CalendarDate& date);

/// Returns the date `count` days later, or earlier if negative; `date` itself if the result is outside of the years 1
/// to 9999.
CalendarDate DaysLater(const CalendarDate& date, std::int32_t count);

/// The clocks of a machine, in milliseconds.
struct MachineTime {
    std::int64_t (*Local)();  ///< local time since 1970, as users have set it
    std::int64_t (*Steady)(); ///< since any moment; it never goes back, and goes on while the machine sleeps
};

/// Both clocks in one class: the time of day, and a count of milliseconds for the timers that never goes back.
class DeviceClock final : public Clock {
public:
    /// A virtual clock that starts at a moment, in seconds since 1970.
    explicit DeviceClock(std::int64_t startMoment) : Start_(startMoment * 1000) {}
    /// The machine's clock.
    explicit DeviceClock(MachineTime machine);

    bool IsVirtual() const { return Machine_.Local == nullptr; }
    DateTime Now() const override;
    float TimeOfDay() const override;
    std::int64_t SteadySeconds() const override;

    std::int64_t Milliseconds() const;
    /// Moves a virtual clock forward to a count of milliseconds, never back.
    void MoveTo(std::int64_t milliseconds);
    /// Sets the time that a virtual clock shows, in seconds since 1970. The timers' count is not changed.
    void StandAt(std::int64_t moment);
    /// Moves the shown time of a virtual clock forward or back, as when a user sets the machine's clock. TimeOfDay,
    /// SteadySeconds and the timers are not affected.
    void SetWall(std::int64_t bySeconds) { WallIsOffBy_ += bySeconds * 1000; }

private:
    std::int64_t LocalMilliseconds() const;  ///< since 1970, as the clock shows
    std::int64_t SteadyMilliseconds() const; ///< the same without the changes by users since the start

    MachineTime Machine_{};  ///< null for a virtual clock
    std::int64_t Start_ = 0; ///< time shown by the virtual clock at count 0, in milliseconds since 1970
    std::int64_t Passed_ = 0;
    std::int64_t WallIsOffBy_ = 0;
    std::int64_t SteadyStart_ = 0; ///< time shown by the machine's clock when its steady count was 0
    std::chrono::steady_clock::time_point Begin_ = std::chrono::steady_clock::now();
};

} // namespace backends
