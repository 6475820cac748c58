// SPDX-License-Identifier: MIT
#include "companion/instrument_words.h"

namespace companion {

Text InstrumentLine(const InstrumentState& state) {
    const Text name = u"Simulated instrument";
    if (!state.IsPlugged)
        return name + (state.Problem.empty() ? u": unplugged" : u": " + state.Problem);
    if (!state.IsHeard)
        return name + u": no record listens";
    switch (state.Last) {
    case SentState::Nothing:
        break;
    case SentState::Sent:
        return name + u": " + state.What + u" sent";
    case SentState::LineFull:
        return name + u": the line is full, " + state.What + u" was not sent whole";
    }
    return name + u": it sends what you press";
}

Text ButtonOfCable(bool isPlugged) {
    return isPlugged ? u"Unplug" : u"Plug in";
}

} // namespace companion
