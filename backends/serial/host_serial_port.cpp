// SPDX-License-Identifier: MIT
#include "backends/serial/host_serial_port.h"

#include "backends/serial/descriptor_source.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace backends {

namespace {

struct Speed {
    std::int32_t BitsPerSecond;
    speed_t Code;
};

constexpr std::array<Speed, 16> Speeds = {{{300, B300},
                                           {600, B600},
                                           {1200, B1200},
                                           {2400, B2400},
                                           {4800, B4800},
                                           {9600, B9600},
                                           {19200, B19200},
                                           {38400, B38400},
                                           {57600, B57600},
                                           {115200, B115200},
                                           {230400, B230400},
                                           {460800, B460800},
                                           {500000, B500000},
                                           {921600, B921600},
                                           {1000000, B1000000},
                                           {2000000, B2000000}}};

struct LineSettings {
    speed_t SpeedCode = B0;
    tcflag_t Flags = 0;
};

std::optional<speed_t> SpeedCode(const Text& digits) {
    const auto wanted = modStringTools::NumberFromText(digits);
    const auto found = std::find_if(Speeds.begin(), Speeds.end(),
                                    [&wanted](const Speed& speed) { return wanted == speed.BitsPerSecond; });
    return found == Speeds.end() ? std::nullopt : std::optional<speed_t>(found->Code);
}

std::optional<tcflag_t> ParityFlags(char16_t letter) {
    switch (modStringTools::UpperChar(letter)) {
    case u'N':
        return 0;
    case u'E':
        return PARENB;
    case u'O':
        return PARENB | PARODD;
    default:
        return std::nullopt;
    }
}

std::optional<tcflag_t> SizeFlags(char16_t digit) {
    constexpr std::array<tcflag_t, 4> sizes = {CS5, CS6, CS7, CS8};
    if (digit < u'5' || digit > u'8')
        return std::nullopt;
    return sizes[static_cast<std::size_t>(digit - u'5')];
}

/// Reads "9600,N,8,1".
std::optional<LineSettings> Parsed(const Text& settings) {
    const std::size_t comma = settings.find(u',');
    const Text rest = comma == Text::npos ? Text() : settings.substr(comma + 1);
    if (rest.size() != 5 || rest[1] != u',' || rest[3] != u',' || (rest[4] != u'1' && rest[4] != u'2'))
        return std::nullopt;
    const auto speed = SpeedCode(settings.substr(0, comma));
    const auto parity = ParityFlags(rest[0]);
    const auto size = SizeFlags(rest[2]);
    if (!speed || !parity || !size)
        return std::nullopt;
    return LineSettings{*speed, *parity | *size | (rest[4] == u'2' ? tcflag_t{CSTOPB} : 0)};
}

bool Apply(int port, const LineSettings& settings) {
    termios line{};
    if (::tcgetattr(port, &line) != 0)
        return false;
    ::cfmakeraw(&line);
    line.c_iflag &= ~static_cast<tcflag_t>(IXOFF | IXANY | INPCK);
    line.c_cflag &= ~static_cast<tcflag_t>(CSIZE | PARENB | PARODD | CSTOPB | CRTSCTS);
    line.c_cflag |= settings.Flags | CLOCAL | CREAD;
    if ((settings.Flags & PARENB) != 0)
        line.c_iflag |= INPCK;
    // A read must distinguish "nothing yet" from the end: with a minimum of 0 both return 0 bytes.
    line.c_cc[VMIN] = 1;
    line.c_cc[VTIME] = 0;
    return ::cfsetspeed(&line, settings.SpeedCode) == 0 && ::tcsetattr(port, TCSANOW, &line) == 0;
}

} // namespace

ErrorNumber SerialDevice::Open(const std::string& path, const Text& lineSettings) {
    Close();
    const auto settings = Parsed(lineSettings);
    if (!settings)
        return NotAvailable;
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0)
        return FromErrno(errno);
    if (!S_ISCHR(found.st_mode)) // a pipe, a disk or a folder may act on being opened
        return NotAvailable;
    backends::Descriptor opened(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    if (!opened.Valid() || ::fstat(opened.Number(), &found) != 0)
        return FromErrno(errno);
    if (!S_ISCHR(found.st_mode)) // replaced meanwhile
        return NotAvailable;
    if (::isatty(opened.Number()) == 0 || !Apply(opened.Number(), *settings))
        return NotAvailable;
    if (::ioctl(opened.Number(), TIOCEXCL) != 0)
        return FromErrno(errno);
    Port_ = std::move(opened);
    return NoError;
}

void SerialDevice::Close() {
    if (!Port_.Valid())
        return;
    // The exclusive mode outlasts the descriptor if another process has the terminal open.
    ::ioctl(Port_.Number(), TIOCNXCL);
    Port_.Close();
}

ReadState SerialDevice::ReadAvailable(std::string& bytes) {
    if (!Port_.Valid())
        return ReadState::Gone;
    int error = 0;
    const ReadState state = ReadDescriptor(Port_.Number(), bytes, error);
    if (state == ReadState::Gone)
        Close();
    return state;
}

} // namespace backends
