// SPDX-License-Identifier: MIT
// The other end of a serial line: an instrument that is plugged in, sends and is pulled out.
#pragma once

#include <chrono>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <string>
#include <string_view>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

class PseudoTerminal {
public:
    PseudoTerminal() { PlugIn(); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;
    ~PseudoTerminal() { PullOut(); }

    void PlugIn() {
        End_ = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        ASSERT_GE(End_, 0);
        ASSERT_EQ(grantpt(End_), 0);
        ASSERT_EQ(unlockpt(End_), 0);
    }
    void PullOut() {
        if (End_ >= 0)
            close(End_);
        End_ = -1;
    }
    std::string Path() const { return ptsname(End_); }
    void Send(std::string_view bytes) const {
        ASSERT_EQ(write(End_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    int Number() const { return End_; }

private:
    int End_ = -1;
};

/// Waits until a descriptor can be read. Returns false if it can't be within this time.
inline bool Tells(int descriptor, int milliseconds = 2000) {
    pollfd one{descriptor, POLLIN, 0};
    return poll(&one, 1, milliseconds) == 1;
}

/// Waits until so many bytes can be read: what was written on one end of a terminal comes to the other a moment later.
inline void WaitUntilThere(int descriptor, std::size_t bytes) {
    const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    int there = 0;
    while (static_cast<std::size_t>(there) < bytes) {
        ASSERT_EQ(ioctl(descriptor, FIONREAD, &there), 0);
        ASSERT_LT(std::chrono::steady_clock::now(), patience) << there << " of " << bytes << " bytes have come";
    }
}
