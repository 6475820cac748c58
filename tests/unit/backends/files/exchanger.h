// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <fcntl.h>
#include <linux/fs.h>
#include <string>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

/// Exchanges two files or folders again and again as fast as the machine can, such as a folder inside the root and a
/// link to one outside.
class Exchanger {
public:
    Exchanger(std::string one, std::string other) : One_(std::move(one)), Other_(std::move(other)) {
        Thread_ = std::thread([this] {
            for (; !Over_; ++Turns)
                ::syscall(SYS_renameat2, AT_FDCWD, One_.c_str(), AT_FDCWD, Other_.c_str(), RENAME_EXCHANGE);
        });
    }
    Exchanger(const Exchanger&) = delete;
    Exchanger& operator=(const Exchanger&) = delete;
    ~Exchanger() {
        Over_ = true;
        Thread_.join();
    }
    std::atomic<int> Turns = 0;

private:
    std::string One_;
    std::string Other_;
    std::atomic<bool> Over_ = false;
    std::thread Thread_;
};
