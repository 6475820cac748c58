// SPDX-License-Identifier: MIT
#include "backends/host/host_clock.h"

#include <algorithm>
#include <ctime>
#include <optional>

namespace backends {

namespace {

constexpr std::int64_t MsPerSecond = 1000;

std::optional<std::int64_t> Count(clockid_t clock) {
    std::timespec now{};
    if (::clock_gettime(clock, &now) != 0)
        return std::nullopt;
    return static_cast<std::int64_t>(now.tv_sec) * MsPerSecond + now.tv_nsec / 1000000;
}

std::int64_t LocalTime() {
    const std::int64_t now = Count(CLOCK_REALTIME).value_or(0);
    const auto whole = static_cast<std::time_t>(now / MsPerSecond);
    std::tm local{};
    localtime_r(&whole, &local);
    return now + local.tm_gmtoff * MsPerSecond;
}

/// In a browser only the clock of the day goes on while the machine sleeps, and it may be set back: what has passed is
/// the longer of two times.
std::int64_t TimeOfTwoClocks() {
    static std::int64_t passed = 0, day = 0, awake = 0;
    const std::int64_t dayNow = Count(CLOCK_REALTIME).value_or(0);
    const std::int64_t awakeNow = Count(CLOCK_MONOTONIC).value_or(0);
    passed += std::max(dayNow - day, awakeNow - awake);
    day = dayNow;
    awake = awakeNow;
    return passed;
}

// CLOCK_MONOTONIC stops while the machine sleeps, and a reading may come right after a sleep.
std::int64_t TimeSinceBoot() {
    const auto sinceBoot = Count(CLOCK_BOOTTIME);
    return sinceBoot ? *sinceBoot : TimeOfTwoClocks();
}

} // namespace

MachineTime HostTime() {
    return {.Local = LocalTime, .Steady = TimeSinceBoot};
}

} // namespace backends
