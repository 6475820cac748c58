// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

/// Returns the frequency of a tone. Each period crosses zero upwards once; the time from the first to the last crossing
/// counts.
inline double MeasuredHertz(const std::vector<std::int16_t>& samples, double samplesPerSecond = 44100) {
    std::vector<std::size_t> upwards;
    for (std::size_t at = 1; at < samples.size(); ++at)
        if (samples[at - 1] < 0 && samples[at] >= 0)
            upwards.push_back(at);
    if (upwards.size() < 2)
        return 0;
    return static_cast<double>(upwards.size() - 1) * samplesPerSecond /
           static_cast<double>(upwards.back() - upwards.front());
}
