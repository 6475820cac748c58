// SPDX-License-Identifier: MIT
// A disk that is really full, for as long as the object lives: no file of this process can grow past a size, and the
// write that reaches it takes the bytes up to there.
#pragma once

#include <csignal>
#include <sys/resource.h>

class FullDisk {
public:
    explicit FullDisk(rlim_t largestFile) {
        OldHandler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &Old);
        const rlimit limit{largestFile, Old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &Old);
        std::signal(SIGXFSZ, OldHandler);
    }

private:
    rlimit Old{};
    void (*OldHandler)(int) = nullptr;
};
