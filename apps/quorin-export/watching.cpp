// SPDX-License-Identifier: MIT
#include "apps/quorin-export/watching.h"

#include <csignal>
#include <ctime>
#include <sys/stat.h>

namespace exporter {

namespace {

sigset_t EndingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGHUP);
    return signals;
}

} // namespace

Watching::Watching() {
    const sigset_t signals = EndingSignals();
    sigprocmask(SIG_BLOCK, &signals, nullptr);
}

void Watching::Note(const std::vector<std::string>& paths) {
    Paths_ = paths;
    States_.clear();
    for (const std::string& path : paths)
        States_.push_back(StateOf(path));
}

bool Watching::WaitForChange() const {
    constexpr long Interval = 300'000'000; // nanoseconds: a file that grows all the time is read three times a second
    const sigset_t signals = EndingSignals();
    for (;;) {
        const timespec interval{0, Interval};
        if (sigtimedwait(&signals, nullptr, &interval) > 0)
            return false;
        for (std::size_t i = 0; i < Paths_.size(); ++i)
            if (StateOf(Paths_[i]) != States_[i])
                return true;
    }
}

Watching::State Watching::StateOf(const std::string& path) {
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0)
        return {-1, -1, -1, -1, -1};
    return {static_cast<long long>(found.st_dev), static_cast<long long>(found.st_ino), found.st_size,
            found.st_mtim.tv_sec, found.st_mtim.tv_nsec};
}

} // namespace exporter
