// SPDX-License-Identifier: MIT
// The line that shows the state of the link. It must show when nothing has been received for a while.
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
    std::string Port;      ///< its name in the settings
    std::string Path;      ///< the device of a serial port; empty for none
    std::string Trouble;   ///< why that device could not be opened
    bool Held = false;     ///< two message boxes are open, one upon the other: nothing is decoded meanwhile
    std::size_t Waits = 0; ///< characters received over a serial port that are held
    bool Heard = false;    ///< something was received since the port was opened
    std::optional<std::int64_t> RecordAge; ///< seconds since the last record; none before the first record
};

struct LinkLine {
    std::string Text;
    bool Alive = false; ///< the link is open, and a record came within the last minute
    bool operator==(const LinkLine&) const = default;
};

LinkLine LinkLineOf(const LinkView& link);

/// What the program is busy with; its text replaces the line.
enum class Work {
    None,
    Long,    ///< an operation takes longer than a tenth of a second
    Waiting, ///< an operation waits for another program
};

/// Returns the text for a kind of work; empty for None.
const char* WorkText(Work work);

/// Returns a duration as "5 s", "3 min" or "2 h 5 min".
std::string AgeText(std::int64_t seconds);

} // namespace companion
