// SPDX-License-Identifier: MIT
// Writes a file to the medium, and leaves that to a thread once the medium has turned out to be slow.
#pragma once

#include "backends/descriptor/descriptor.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace backends {

class SyncWorker {
public:
    using Duration = std::chrono::milliseconds;
    using Sync = std::function<int(int file)>;

    /// A writing that takes longer is the last one that the caller waits for: a loop that stands still for two seconds
    /// would be taken for a sleep of the device.
    static constexpr Duration Longest{200};

    /// `sync` writes the file of a descriptor to the medium and returns 0, or -1 with errno.
    explicit SyncWorker(Sync sync) : Sync_(std::move(sync)) {}
    SyncWorker(const SyncWorker&) = delete;
    SyncWorker& operator=(const SyncWorker&) = delete;
    ~SyncWorker(); ///< waits until the thread has written what it was given

    /// Writes the file to the medium, or gives it to the thread. Returns the errno of a failure, also of one that the
    /// thread has had since the last call; 0 for none.
    int Write(int file);

    /// Returns how long the writing took after which the thread has taken over; nothing before.
    std::optional<Duration> SlowOne() const { return SlowOne_; }

private:
    void Run();

    Sync Sync_;
    std::optional<Duration> SlowOne_;
    std::thread Thread_;
    std::mutex Mutex_; ///< for what follows
    std::condition_variable Asked_;
    Descriptor
        Next_; ///< a duplicate of the descriptor of the file that is to be written; none if there is nothing to do
    int Failure_ = 0; ///< errno
    bool Ends_ = false;
};

} // namespace backends
