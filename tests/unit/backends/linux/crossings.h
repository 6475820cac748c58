// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

/// The frequency of a tone: each turn crosses zero upwards once. Counted from the first crossing to the last.
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
