// SPDX-License-Identifier: MIT
#include "backends/headless/poll_pump.h"

#include <poll.h>

namespace backends::headless {

void PollPump::SleepOn(const std::vector<int>& descriptors, int milliseconds) {
    std::vector<pollfd> waiting;
    waiting.reserve(descriptors.size());
    for (const int descriptor : descriptors)
        waiting.push_back({descriptor, POLLIN, 0});
    ::poll(waiting.data(), waiting.size(), milliseconds);
}

} // namespace backends::headless
