// SPDX-License-Identifier: MIT
// What is remembered about the link from one update of its line to the next: when the last result came, and why a port
// could not be opened.
#pragma once

#include "companion/link_line.h"
#include "src/view/platform/errors.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace companion {

/// What a back-end knows of its serial port.
struct PortFacts {
    std::string Address; ///< the address that the port number stands for; empty for none
    bool Open = false;
    bool Heard = false;      ///< something was received since the port was opened
    std::size_t Waiting = 0; ///< characters that have not been read
    platform::ErrorNumber LastOpening = platform::NoError;
    std::string Trouble; ///< why the last opening failed, if the error number does not say it
};

class LinkWatch {
public:
    using Moment = std::chrono::milliseconds; ///< by a clock that includes the time while the machine sleeps
    using TroubleFinder = std::function<std::string(const std::string& address, platform::ErrorNumber error)>;

    /// `find` returns why an address could not be opened. It may be slow: for an unchanged address and error it is
    /// called every two seconds at most.
    explicit LinkWatch(TroubleFinder find) : Find_(std::move(find)) {}

    /// A result was received, taken or not.
    void ResultCame(Moment now) { LastResult_ = now; }

    /// Returns true five times a second at most: the line shows whole seconds, and the loop may call this a thousand
    /// times.
    bool IsDue(Moment now);

    /// Returns the current line. `held`: two message boxes are open, one upon the other.
    LinkLine Line(const PortFacts& port, bool held, Moment now);

private:
    std::string TroubleOf(const PortFacts& port, Moment now);

    TroubleFinder Find_;
    std::optional<Moment> LastResult_;
    Moment LastLook_{-1000};
    /// The last answer of Find_.
    struct {
        std::string Address;
        platform::ErrorNumber Error = platform::NoError;
        Moment When{};
        std::string Words;
    } Found_;
};

} // namespace companion
