// SPDX-License-Identifier: MIT
// The words on a simulated instrument that sends what a person asks for.
#pragma once

#include "src/text/text.h"

namespace companion {

/// What became of the last request.
enum class SentState { Nothing, Sent, LineFull };

struct InstrumentState {
    bool IsPlugged = true;
    bool IsHeard = false; ///< a record listens
    Text Problem;         ///< why it can't be plugged in; empty for none
    SentState Last = SentState::Nothing;
    Text What; ///< that was sent
};

/// Returns the line above the buttons: "Simulated instrument: Moisture sent."
Text InstrumentLine(const InstrumentState& state);

} // namespace companion
