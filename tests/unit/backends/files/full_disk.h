// SPDX-License-Identifier: MIT
// A disk that is really full, for as long as the object lives: no file of this process can grow past a size, and the
// write that reaches it takes the bytes up to there.
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
