// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/waiting.h"

#include <algorithm>
#include <csignal>
#include <thread>

namespace instrument {

namespace {

volatile std::sig_atomic_t Stop = 0;

void AskToStop(int) {
    Stop = 1;
}

} // namespace

void CatchStopSignals() {
    struct sigaction stop = {};
    stop.sa_handler = AskToStop; // without SA_RESTART: a blocked call returns
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        sigaction(number, &stop, nullptr);
    }
    std::signal(SIGPIPE, SIG_IGN);
}

bool StopAsked() {
    return Stop != 0;
}

bool PauseFor(Microseconds duration) {
    const auto end = std::chrono::steady_clock::now() + duration;
    while (!StopAsked()) {
        const auto left = end - std::chrono::steady_clock::now();
        if (left <= left.zero()) {
            return true;
        }
        std::this_thread::sleep_for(std::min<std::chrono::nanoseconds>(left, LookInterval));
    }
    return false;
}

} // namespace instrument
