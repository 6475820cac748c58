// SPDX-License-Identifier: MIT
// The other end of a serial line: an instrument that is plugged in, sends and is pulled out.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <string>
#include <string_view>
#include <termios.h>
#include <unistd.h>

class PseudoTerminal {
public:
    PseudoTerminal() { PlugIn(); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;
    ~PseudoTerminal() { PullOut(); }

    void PlugIn() {
        End = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        ASSERT_GE(End, 0);
        ASSERT_EQ(grantpt(End), 0);
        ASSERT_EQ(unlockpt(End), 0);
    }
    void PullOut() {
        if (End >= 0)
            close(End);
        End = -1;
    }
    std::string Path() const { return ptsname(End); }
    void Send(std::string_view bytes) const {
        ASSERT_EQ(write(End, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    int Number() const { return End; }

private:
    int End = -1;
};

/// Waits until a descriptor has something to tell.
inline bool Tells(int descriptor, int milliseconds = 2000) {
    pollfd one{descriptor, POLLIN, 0};
    return poll(&one, 1, milliseconds) == 1;
}
