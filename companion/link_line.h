// SPDX-License-Identifier: MIT
// The line that tells a person how the link is. A link that has gone quiet must not look alive.
#pragma once

#include "src/link/ports.h"

#include <cstdint>
#include <optional>
#include <string>

namespace companion {

using modBluetooth::LinkRoad;

struct LinkView {
    LinkRoad Road = LinkRoad::None; ///< None: no port is chosen
    bool Wanted = false;            ///< a download is open that takes results
    bool Open = false;
    std::string Port;                      ///< as the settings call it
    std::string Path;                      ///< the device behind a serial port; empty for none
    std::string Trouble;                   ///< why that could not be opened
    bool Held = false;                     ///< two questions stand, one upon the other: nothing is decoded meanwhile
    std::size_t Waits = 0;                 ///< characters that have come over a serial port and are held
    bool Heard = false;                    ///< something has come since the port was opened
    std::optional<std::int64_t> RecordAge; ///< seconds since the last record; nothing before the first one
};

struct LinkLine {
    std::string Text;
    bool Alive = false; ///< a record has come within the last minute, over a link that is open
    bool operator==(const LinkLine&) const = default;
};

LinkLine LinkLineOf(const LinkView& link);

/// What the window is at, which takes the line's place.
enum class Work {
    None,
    Long,    ///< an operation goes on for longer than a tenth of a second
    Waiting, ///< it waits for another program
};

/// The words of a work; empty for none.
const char* WorkText(Work work);

/// "5 s", "3 min", "2 h 5 min".
std::string AgeText(std::int64_t seconds);

} // namespace companion
