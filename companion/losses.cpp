// SPDX-License-Identifier: MIT
#include "companion/losses.h"

namespace companion {

void Losses::NoPlace(const Text& words) {
    Cause = words;
    Readings = 0;
}

void Losses::Reading(const Text& words) {
    if (Cause.empty())
        Cause = words;
    ++Readings;
}

Text Losses::Words() const {
    if (Readings == 0)
        return Cause;
    const Text count = Readings == 1 ? Text(u"1 reading is") : modStringTools::NumberText(Readings) + u" readings are";
    return Cause + u"\n\n" + count + u" not stored.";
}

void Losses::Seen() {
    Cause.clear();
    Readings = 0;
}

} // namespace companion
