// SPDX-License-Identifier: MIT
// Tells the service manager that has started the program how it fares, as systemd's sd_notify(3) describes it: a
// datagram of lines to the socket of $NOTIFY_SOCKET.
#pragma once

#include <chrono>
#include <string>

namespace start {

class ServiceManager {
public:
    /// Reads the environment, and removes what it has read: a child process is not this service.
    ServiceManager();

    /// Sends lines such as "READY=1" or "STATUS=...". Does nothing without a service manager.
    void Tell(const std::string& lines) const;

    /// Call this in each round of the program's loop: a program that hangs is started again, if the manager asks for
    /// signs of life. Sends one when half of the time has passed that it waits for them.
    void SignOfLife(std::chrono::steady_clock::time_point now = std::chrono::steady_clock::now());

private:
    std::string Socket_;                    ///< a path, or a name that begins with `@`; empty for none
    std::chrono::microseconds Patience_{0}; ///< of the manager; 0 if it does not wait
    std::chrono::steady_clock::time_point Last_{};
};

} // namespace start
