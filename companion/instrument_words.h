// SPDX-License-Identifier: MIT
// The words on a simulated instrument that sends what a person asks for, and on its buttons.
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

// Its buttons, beside one for each kind of result.
inline constexpr const char16_t* ButtonOfAll = u"All";
inline constexpr const char16_t* ButtonOfStranger = u"A stranger's reading";
inline constexpr const char16_t* ButtonOfTick = u"every 10 s";
inline constexpr const char16_t* ButtonOfAfresh = u"Start afresh";
Text ButtonOfCable(bool isPlugged);

/// What is asked before the data is deleted.
inline constexpr const char16_t* AfreshQuestion =
    u"Start afresh? Every driver and download of the demonstration will be deleted";

} // namespace companion
