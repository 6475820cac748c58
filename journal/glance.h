// SPDX-License-Identifier: MIT
// What decides whether a line of the journal is wanted, read without keeping the rest of the line.
#pragma once

#include "journal/journal_format.h"

#include <string>
#include <string_view>

namespace journal {

/// Texts are empty if the line does not have them.
struct Glance {
    std::string Event;
    std::string Time;    ///< "2026-11-22T20:30:05"
    std::string Verdict; ///< of a reading
};

/// Reads a whole line. Returns false if it is no JSON object. `glance` is filled anew, so that its texts are reused.
bool LookAt(std::string_view line, Glance& glance);

/// A period of time, by the clock of the form. Both ends belong to it.
struct Period {
    std::string From; ///< "2026-11-22", "2026-11-22T20:30" or "2026-11-22T20:30:05"; empty for no limit
    std::string To;   ///< the same; the whole of that day or minute belongs to the period
    bool Has(std::string_view time) const;
};

// Values of a line. A name that is missing, or has a value of another kind, counts as empty or 0.
std::string TextIn(const Line& line, const char* name);
std::int64_t NumberIn(const Line& line, const char* name);

} // namespace journal
