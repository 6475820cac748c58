// SPDX-License-Identifier: MIT
#include "backends/host/host_clock.h"

#include <ctime>

namespace backends {

namespace {

constexpr std::int64_t MsPerSecond = 1000;

std::int64_t Count(clockid_t clock) {
    std::timespec now{};
    ::clock_gettime(clock, &now);
    return static_cast<std::int64_t>(now.tv_sec) * MsPerSecond + now.tv_nsec / 1000000;
}

std::int64_t LocalTime() {
    const std::int64_t now = Count(CLOCK_REALTIME);
    const auto whole = static_cast<std::time_t>(now / MsPerSecond);
    std::tm local{};
    localtime_r(&whole, &local);
    return now + local.tm_gmtoff * MsPerSecond;
}

// CLOCK_MONOTONIC stops while the machine sleeps, and a reading may come right after a sleep.
std::int64_t TimeSinceBoot() {
    return Count(CLOCK_BOOTTIME);
}

} // namespace

MachineTime HostTime() {
    return {.Local = LocalTime, .Steady = TimeSinceBoot};
}

} // namespace backends
