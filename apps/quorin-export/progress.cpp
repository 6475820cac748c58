// SPDX-License-Identifier: MIT
#include "apps/quorin-export/progress.h"

#include <algorithm>
#include <iostream>
#include <unistd.h>
#include <utility>

namespace exporter {

using Clock = std::chrono::steady_clock;

Progress::Progress(std::string file, std::size_t expected)
    : File_(std::move(file)), Expected_(expected), IsTerminal_(::isatty(STDERR_FILENO) == 1),
      Next_(Clock::now() + std::chrono::seconds(1)) {
}

Progress::~Progress() {
    if (IsShown_)
        std::cerr << "\r\x1b[K" << std::flush; // erases the line
}

void Progress::Advance(std::size_t bytes) {
    Made_ += bytes;
    if (!IsTerminal_ || Clock::now() < Next_)
        return;
    constexpr std::size_t AlmostAll = 99;
    Next_ = Clock::now() + std::chrono::milliseconds(200);
    IsShown_ = true;
    std::cerr << "\r" << File_ << ": " << std::min(AlmostAll, Made_ * 100 / std::max<std::size_t>(Expected_, 1)) << " %"
              << std::flush;
}

} // namespace exporter
