// SPDX-License-Identifier: MIT
#include "apps/start/service_manager.h"

#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace start {

namespace {

std::string TakeVariable(const char* name) {
    const char* const text = std::getenv(name);
    std::string value = text != nullptr ? text : "";
    ::unsetenv(name);
    return value;
}

std::int64_t NumberOr(const std::string& text, std::int64_t otherwise) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : otherwise;
}

} // namespace

ServiceManager::ServiceManager() : Socket_(TakeVariable("NOTIFY_SOCKET")) {
    const std::string time = TakeVariable("WATCHDOG_USEC");
    const std::string process = TakeVariable("WATCHDOG_PID");
    if (process.empty() || NumberOr(process, 0) == ::getpid())
        Patience_ = std::chrono::microseconds(NumberOr(time, 0));
}

// A manager that does not listen any more is no concern of the program.
void ServiceManager::Tell(const std::string& lines) const {
    sockaddr_un address{};
    if (Socket_.empty() || Socket_.size() >= sizeof address.sun_path)
        return;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, Socket_.data(), Socket_.size());
    if (address.sun_path[0] == '@')
        address.sun_path[0] = '\0';
    const int socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (socket < 0)
        return;
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + Socket_.size());
    (void)::sendto(socket, lines.data(), lines.size(), MSG_NOSIGNAL, reinterpret_cast<const sockaddr*>(&address),
                   length);
    ::close(socket);
}

void ServiceManager::SignOfLife(std::chrono::steady_clock::time_point now) {
    if (Patience_.count() <= 0 || now - Last_ < Patience_ / 2)
        return;
    Last_ = now;
    Tell("WATCHDOG=1");
}

} // namespace start
