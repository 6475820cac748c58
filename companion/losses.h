// SPDX-License-Identifier: MIT
// What must be shown in a message box of the window: readings that signalled with their tone that they were taken, but
// that no row of the file can hold.
#pragma once

#include "src/text/text.h"

namespace companion {

class Losses {
public:
    /// Nothing of the record that was opened can be stored.
    void NoPlace(const Text& words);
    /// A reading is not stored in any row.
    void Reading(const Text& words);

    /// True if there is something to show.
    bool Any() const { return !Cause_.empty(); }
    /// The text to show, with the number of readings.
    Text Words() const;
    /// A person has seen the text. Later losses start a new one.
    void Seen();

private:
    Text Cause_; ///< the text of the first loss
    int Readings_ = 0;
};

} // namespace companion
