// SPDX-License-Identifier: MIT
// The state of the link between two looks at it: when a result came last, and why a port could not be opened.
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
    std::string Address; ///< of what stands behind it; empty for none
    bool Open = false;
    bool Heard = false;      ///< something has come since it was opened
    std::size_t Waiting = 0; ///< characters that nobody has read
    platform::ErrorNumber LastOpening = platform::NoError;
    std::string Trouble; ///< why that failed, where the number does not tell
};

class LinkWatch {
public:
    using Moment = std::chrono::milliseconds; ///< by a clock that counts the time in which the machine has slept
    using TroubleFinder = std::function<std::string(const std::string& address, platform::ErrorNumber error)>;

    /// `find` says why an address could not be opened. It may take its time: it is asked every two seconds at the most.
    explicit LinkWatch(TroubleFinder find) : Find_(std::move(find)) {}

    /// A result has come, taken or not.
    void ResultCame(Moment now) { LastResult_ = now; }

    /// True five times a second at the most: the line tells whole seconds, and the loop may come by a thousand times.
    bool IsDue(Moment now);

    /// The line as it is now. `held`: two questions stand, one upon the other.
    LinkLine Line(const PortFacts& port, bool held, Moment now);

private:
    std::string TroubleOf(const PortFacts& port, Moment now);

    TroubleFinder Find_;
    std::optional<Moment> LastResult_;
    Moment LastLook_{-1000};
    /// What was found of a trouble that the number alone tells.
    struct {
        std::string Address;
        platform::ErrorNumber Error = platform::NoError;
        Moment When{};
        std::string Words;
    } Found_;
};

} // namespace companion
