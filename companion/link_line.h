// SPDX-License-Identifier: MIT
// The line that shows the state of the link and what became of the last reading. It must show when nothing has been
// received for a while.
#pragma once

#include "companion/verdict_words.h"
#include "src/link/ports.h"

#include <cstdint>
#include <optional>
#include <string>

namespace companion {

using modBluetooth::LinkKind;

/// What became of a reading.
struct LastReading {
    VerdictWords Words;
    Text Time;            ///< as the form's clock shows it, "20:30:12"
    std::int64_t Age = 0; ///< seconds
};

struct LinkView {
    LinkKind Kind = LinkKind::None; ///< None: no port is chosen
    bool Wanted = false;            ///< a download is open that takes results
    bool Open = false;
    std::int64_t DownFor = 0; ///< seconds since it was wanted and not open
    std::string Port;         ///< its name in the settings
    std::string Path;         ///< the device of a serial port; empty for none
    std::string Trouble;      ///< why that device could not be opened
    bool Held = false;        ///< two message boxes are open, one upon the other: nothing is decoded meanwhile
    bool Paused = false;      ///< a person has paused the link, which is held likewise
    std::size_t Waits = 0;    ///< characters received over a serial port that are held
    std::optional<std::int64_t> HeardAge; ///< seconds since something was received; none since the port was opened
    std::optional<LastReading> Last;      ///< none since the link is wanted
};

enum class LineLook {
    Plain,
    Alive, ///< a reading was taken within the last minute
    Alarm, ///< the link is down, or the last reading was refused
};

struct LinkLine {
    std::string Text;
    LineLook Look = LineLook::Plain;
    /// The text without what counts on by itself: a screen reader says it when it changes.
    std::string News;
    bool OffersPorts = false; ///< another port may help
    bool operator==(const LinkLine&) const = default;
};

/// A reading that was refused is shown this long, whatever comes next.
inline constexpr std::int64_t AlarmSeconds = 5;

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
