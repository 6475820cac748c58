// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/printer.h"

#include "apps/quorin-instrument/waiting.h"

#include <cerrno>
#include <cstdio>

namespace instrument {

Outcome Printer::Send(std::string_view bytes) {
    if (StopAsked()) {
        return Outcome::Stopped;
    }
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0) {
        return Outcome::Done;
    }
    return errno == EPIPE ? Outcome::Stopped : FailBySystem("can't print");
}

} // namespace instrument
