// SPDX-License-Identifier: MIT
#include "backends/host/sync_worker.h"

#include <cerrno>
#include <fcntl.h>
#include <utility>

namespace backends {

SyncWorker::~SyncWorker() {
    if (!Thread_.joinable())
        return;
    {
        const std::lock_guard guard(Mutex_);
        Ends_ = true;
    }
    Asked_.notify_one();
    Thread_.join();
}

int SyncWorker::Write(int file) {
    using Clock = std::chrono::steady_clock;
    if (SlowOne_) {
        const std::lock_guard guard(Mutex_);
        Next_ = Descriptor(::fcntl(file, F_DUPFD_CLOEXEC, 0)); // the caller may close its own
        Asked_.notify_one();
        return std::exchange(Failure_, Next_.Valid() ? 0 : errno);
    }
    const Clock::time_point begin = Clock::now();
    const int failure = Sync_(file) == 0 ? 0 : errno;
    const auto took = std::chrono::duration_cast<Duration>(Clock::now() - begin);
    if (took > Longest) {
        SlowOne_ = took;
        Thread_ = std::thread([this] { Run(); });
    }
    return failure;
}

void SyncWorker::Run() {
    std::unique_lock lock(Mutex_);
    for (;;) {
        Asked_.wait(lock, [this] { return Next_.Valid() || Ends_; });
        if (!Next_.Valid())
            return;
        const Descriptor file = std::move(Next_);
        lock.unlock();
        const int failure = Sync_(file.Number()) == 0 ? 0 : errno;
        lock.lock();
        if (failure != 0)
            Failure_ = failure;
    }
}

} // namespace backends
