// SPDX-License-Identifier: MIT
#include "journal/recording.h"

#include <algorithm>

namespace journal {

std::int64_t RecordingTimes::SinceLast(std::int64_t ms, std::int64_t second) {
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
