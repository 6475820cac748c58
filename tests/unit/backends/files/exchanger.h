// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <fcntl.h>
#include <linux/fs.h>
#include <string>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

/// Somebody puts one thing where another is, such as a link to a folder outside where the folder inside is, and back,
/// as fast as the machine can.
class Exchanger {
public:
    Exchanger(std::string one, std::string other) : One(std::move(one)), Other(std::move(other)) {
        Thread = std::thread([this] {
            for (; !Over; ++Turns)
                ::syscall(SYS_renameat2, AT_FDCWD, One.c_str(), AT_FDCWD, Other.c_str(), RENAME_EXCHANGE);
        });
    }
    Exchanger(const Exchanger&) = delete;
    Exchanger& operator=(const Exchanger&) = delete;
    ~Exchanger() {
        Over = true;
        Thread.join();
    }
    std::atomic<int> Turns = 0;

private:
    std::string One;
    std::string Other;
    std::atomic<bool> Over = false;
    std::thread Thread;
};
