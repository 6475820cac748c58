// SPDX-License-Identifier: MIT
#include "companion/losses.h"

namespace companion {

void Losses::NoPlace(const Text& words) {
    Cause_ = words;
    Readings_ = 0;
}

void Losses::Reading(const Text& words) {
    if (Cause_.empty())
        Cause_ = words;
    ++Readings_;
}

Text Losses::Words() const {
    if (Readings_ == 0)
        return Cause_;
    const Text count =
        Readings_ == 1 ? Text(u"1 reading is") : modStringTools::NumberText(Readings_) + u" readings are";
    return Cause_ + u"\n\n" + count + u" not stored.";
}

void Losses::Seen() {
    Cause_.clear();
    Readings_ = 0;
}

} // namespace companion
