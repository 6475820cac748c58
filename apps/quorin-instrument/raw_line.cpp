// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/raw_line.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace instrument {

bool SetRawLine(int descriptor) {
    termios line = {};
    if (tcgetattr(descriptor, &line) != 0) {
        return false;
    }
    cfmakeraw(&line); // 8 bits, no parity
    line.c_cflag &= ~static_cast<tcflag_t>(CSTOPB | CRTSCTS);
    line.c_cflag |= CLOCAL | CREAD;
    cfsetispeed(&line, B9600);
    cfsetospeed(&line, B9600);
    return tcsetattr(descriptor, TCSANOW, &line) == 0;
}

long WriteSome(int descriptor, std::string_view bytes) {
    pollfd line = {descriptor, POLLIN | POLLOUT, 0};
    if (poll(&line, 1, 50) < 0 && errno != EINTR) {
        return -1;
    }
    if ((line.revents & POLLIN) != 0) {
        std::array<char, 256> unheeded;
        [[maybe_unused]] const auto count = read(descriptor, unheeded.data(), unheeded.size());
    }
    const auto written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && (errno == EAGAIN || errno == EINTR)) {
        return 0;
    }
    return written;
}

} // namespace instrument
