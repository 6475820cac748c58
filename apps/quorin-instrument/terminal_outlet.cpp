// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/terminal_outlet.h"

#include "apps/quorin-instrument/raw_line.h"
#include "apps/quorin-instrument/waiting.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace instrument {

namespace {

/// A reader opens its port and then sets it up, which may discard what has arrived by then.
constexpr Microseconds SettlingTime = std::chrono::milliseconds(100);

/// Returns the target of a symbolic link; empty if the path is not a link.
std::string LinkTarget(const std::string& path) {
    std::array<char, PATH_MAX> target;
    const auto length = readlink(path.c_str(), target.data(), target.size());
    return length < 0 ? std::string() : std::string(target.data(), static_cast<std::size_t>(length));
}

} // namespace

PseudoTerminal::~PseudoTerminal() {
    RemoveLink();
}

void PseudoTerminal::RemoveLink() {
    // Another instrument may have replaced the link by its own.
    if (LinkMade_ && LinkTarget(Link_) == SlavePath_) {
        unlink(Link_.c_str());
    }
    LinkMade_ = false;
}

bool PseudoTerminal::Unplug() {
    RemoveLink();
    Master_.Close();
    LineReady_ = false;
    return true;
}

Outcome PseudoTerminal::Open() {
    if (const Outcome plugged = Plug(); plugged != Outcome::Done) {
        return plugged;
    }
    std::printf("%s\n", SlavePath_.c_str());
    if (std::fflush(stdout) != 0) {
        return FailBySystem("can't write the name of the line");
    }
    return Outcome::Done;
}

Outcome PseudoTerminal::Plug() {
    Master_ = backends::Descriptor(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
    if (!Master_.Valid() || grantpt(Master_.Number()) != 0 || unlockpt(Master_.Number()) != 0) {
        return FailBySystem("can't open a pseudo terminal");
    }
    std::array<char, PATH_MAX> path;
    if (ptsname_r(Master_.Number(), path.data(), path.size()) != 0) {
        return FailBySystem("can't name the pseudo terminal");
    }
    SlavePath_ = path.data();
    // The master reports that the slave is not open only after it has been open once.
    const backends::Descriptor slave(open(path.data(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!slave.Valid()) {
        return FailBySystem("can't open " + SlavePath_);
    }
    return MakeLink();
}

Outcome PseudoTerminal::MakeLink() {
    if (Link_.empty()) {
        return Outcome::Done;
    }
    // A link may be left from a run that was killed; anything else is not removed.
    if (!LinkTarget(Link_).empty()) {
        unlink(Link_.c_str());
    }
    if (symlink(SlavePath_.c_str(), Link_.c_str()) != 0) {
        return FailBySystem("can't make the link " + Link_);
    }
    LinkMade_ = true;
    return Outcome::Done;
}

bool PseudoTerminal::ReaderThere() const {
    if (!IsPlugged()) {
        return false;
    }
    pollfd master = {Master_.Number(), 0, 0};
    return poll(&master, 1, 0) >= 0 && (master.revents & POLLHUP) == 0;
}

Outcome PseudoTerminal::WaitForReader() {
    LineReady_ = false;
    while (!ReaderThere()) {
        if (!PauseFor(LookInterval)) {
            return Outcome::Stopped;
        }
    }
    // When the last reader closed the line, it got the settings of a login terminal again. Setting the master sets the
    // slave.
    if (!SetRawLine(Master_.Number())) {
        return FailBySystem("can't set the line " + SlavePath_);
    }
    LineReady_ = true;
    return PauseFor(SettlingTime) ? Outcome::Done : Outcome::Stopped;
}

Outcome PseudoTerminal::Send(std::string_view bytes) {
    while (!bytes.empty()) {
        if (StopAsked()) {
            return Outcome::Stopped;
        }
        if (!LineReady_ || !ReaderThere()) {
            if (const Outcome there = WaitForReader(); there != Outcome::Done) {
                return there;
            }
            continue; // the reader may have gone again during the pause
        }
        const long written = WriteSome(Master_.Number(), bytes);
        if (written < 0 && errno != EIO) { // EIO: the reader has just gone
            return FailBySystem("can't write to " + SlavePath_);
        }
        bytes.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return Outcome::Done;
}

bool PseudoTerminal::SendAtOnce(std::string_view bytes) {
    if (!ReaderThere() || !SetRawLine(Master_.Number())) {
        return false;
    }
    while (!bytes.empty()) {
        const long written = WriteSome(Master_.Number(), bytes);
        if (written <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

Outcome PseudoTerminal::Finish(Linger linger) {
    const auto end = std::chrono::steady_clock::now() + linger.value_or(std::chrono::milliseconds(0));
    while (ReaderThere() && (!linger || std::chrono::steady_clock::now() < end)) {
        if (!PauseFor(LookInterval)) {
            return Outcome::Stopped;
        }
    }
    return Outcome::Done;
}

} // namespace instrument
