// SPDX-License-Identifier: MIT
#include "backends/host/sync_worker.h"

#include <fcntl.h>
#include <system_error>
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
    if (Thread_.joinable())
        return GiveToThread(file);
    const Clock::time_point begin = Clock::now();
    const int failure = WriteNow(file);
    const auto took = std::chrono::duration_cast<Duration>(Clock::now() - begin);
    if (took > Longest)
        StartThread(took);
    return failure;
}

void SyncWorker::StartThread(Duration took) {
    try {
        Thread_ = std::thread([this] { Run(); });
        SlowOne_ = took;
    } catch (const std::system_error&) { // the machine has no thread left: the caller goes on waiting
    }
}

/// One request is enough for all that is appended to a file before it is written; a second one is for the file of the
/// next day.
int SyncWorker::GiveToThread(int file) {
    constexpr std::size_t Most = 2;
    Descriptor duplicate(::fcntl(file, F_DUPFD_CLOEXEC, 0)); // the caller may close its own
    if (!duplicate.Valid())
        return errno;
    const std::lock_guard guard(Mutex_);
    if (Next_.size() == Most)
        Next_.pop_back();
    Next_.push_back(std::move(duplicate));
    Asked_.notify_one();
    return std::exchange(Failure_, 0);
}

void SyncWorker::Run() {
    std::unique_lock lock(Mutex_);
    for (;;) {
        Asked_.wait(lock, [this] { return !Next_.empty() || Ends_; });
        if (Next_.empty())
            return;
        const Descriptor file = std::move(Next_.front());
        Next_.erase(Next_.begin());
        lock.unlock();
        const int failure = WriteNow(file.Number());
        lock.lock();
        if (failure != 0)
            Failure_ = failure;
    }
}

} // namespace backends
