// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/serial_outlet.h"

#include "apps/quorin-instrument/raw_line.h"
#include "apps/quorin-instrument/waiting.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace instrument {

Outcome SerialDevice::Open() {
    struct stat found {};
    if (stat(Path_.c_str(), &found) != 0) {
        return FailBySystem("can't open " + Path_);
    }
    if (!S_ISCHR(found.st_mode)) { // opening another kind of device may have an effect
        return Fail(Path_ + " is not a serial line");
    }
    // Without O_NONBLOCK, open would wait for the carrier of a modem.
    Line_ = backends::Descriptor(open(Path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
    if (!Line_.Valid()) {
        return FailBySystem("can't open " + Path_);
    }
    if (isatty(Line_.Number()) == 0) {
        return Fail(Path_ + " is not a serial line");
    }
    return SetRawLine(Line_.Number()) ? Outcome::Done : FailBySystem("can't set the line " + Path_);
}

Outcome SerialDevice::Send(std::string_view bytes) {
    while (!bytes.empty()) {
        if (StopAsked()) {
            return Outcome::Stopped;
        }
        const long written = WriteSome(Line_.Number(), bytes);
        if (written < 0) {
            return FailBySystem("can't write to " + Path_);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return Outcome::Done;
}

Outcome SerialDevice::Finish(Linger linger) {
    while (tcdrain(Line_.Number()) != 0) {
        if (StopAsked()) {
            return Outcome::Stopped;
        }
        if (errno != EINTR) {
            return FailBySystem("can't write to " + Path_);
        }
    }
    return PauseFor(linger.value_or(std::chrono::milliseconds(0))) ? Outcome::Done : Outcome::Stopped;
}

} // namespace instrument
