// SPDX-License-Identifier: MIT
// A disk that is really full while the object exists: no file of this process can grow beyond a size. The write that
// reaches the size stores the bytes up to there.
#pragma once

#include <csignal>
#include <sys/resource.h>

class FullDisk {
public:
    explicit FullDisk(rlim_t largestFile) {
        OldHandler_ = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &Old_);
        const rlimit limit{largestFile, Old_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &Old_);
        std::signal(SIGXFSZ, OldHandler_);
    }

private:
    rlimit Old_{};
    void (*OldHandler_)(int) = nullptr;
};
