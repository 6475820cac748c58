// SPDX-License-Identifier: MIT
#include "apps/quorin-export/progress.h"

#include <algorithm>
#include <iostream>
#include <unistd.h>
#include <utility>

namespace exporter {

Progress::Progress(std::string file, std::size_t expected, ProgressClock::time_point since)
    : File_(std::move(file)), Expected_(expected), IsTerminal_(::isatty(STDERR_FILENO) == 1), Next_(since + Patience) {
}

Progress::~Progress() {
    if (IsShown_)
        std::cerr << "\r\x1b[K" << std::flush; // erases the line
}

void Progress::Advance(std::size_t done) {
    Done_ += done;
    if (!IsTerminal_ || ProgressClock::now() < Next_)
        return;
    constexpr std::size_t AlmostAll = 99;
    Next_ = ProgressClock::now() + std::chrono::milliseconds(200);
    IsShown_ = true;
    std::cerr << "\r" << File_ << ": " << std::min(AlmostAll, Done_ * 100 / std::max<std::size_t>(Expected_, 1)) << " %"
              << std::flush;
}

} // namespace exporter
