// SPDX-License-Identifier: MIT
// Writes a file to the medium, and leaves that to a thread once the medium has turned out to be slow.
#pragma once

#include "backends/descriptor/descriptor.h"

#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace backends {

class SyncWorker {
public:
    using Duration = std::chrono::milliseconds;
    using Sync = std::function<int(int file)>;

    /// A writing that takes longer is the last one that the caller waits for: a loop that stands still for two seconds
    /// would be taken for a sleep of the device. Without a thread the caller waits each time.
    static constexpr Duration Longest{200};

    /// `sync` writes the file of a descriptor to the medium and returns 0, or -1 with errno.
    explicit SyncWorker(Sync sync) : Sync_(std::move(sync)) {}
    SyncWorker(const SyncWorker&) = delete;
    SyncWorker& operator=(const SyncWorker&) = delete;
    ~SyncWorker(); ///< waits until the thread has written what it was given

    /// Writes the file to the medium, or gives it to the thread. Returns the errno of a failure, also of one that the
    /// thread has had since the last call; 0 for none.
    int Write(int file);
    /// Writes it before it returns, however long that takes.
    int WriteNow(int file) { return Sync_(file) == 0 ? 0 : errno; }

    /// Returns how long the writing took after which the thread has taken over; nothing before.
    std::optional<Duration> SlowOne() const { return SlowOne_; }

private:
    void StartThread(Duration took);
    int GiveToThread(int file);
    void Run();

    Sync Sync_;
    std::optional<Duration> SlowOne_;
    std::thread Thread_;
    std::mutex Mutex_; ///< for what follows
    std::condition_variable Asked_;
    std::vector<Descriptor> Next_; ///< duplicates of the descriptors of files that are to be written
    int Failure_ = 0;              ///< errno
    bool Ends_ = false;
};

} // namespace backends
