// SPDX-License-Identifier: MIT
// What has to be said to a person's face, in a box of the window's own: readings that sound as if they were taken, and
// that no row of the file can hold.
#pragma once

#include "src/text/text.h"

namespace companion {

class Losses {
public:
    /// Nothing of the record that was opened can be stored.
    void NoPlace(const Text& words);
    /// A reading is in no row.
    void Reading(const Text& words);

    /// Whether there is something to say.
    bool Any() const { return !Cause.empty(); }
    /// What is said. It counts the readings.
    Text Words() const;
    /// A person has seen it. What comes afterwards is said anew.
    void Seen();

private:
    Text Cause; ///< what came first
    int Readings = 0;
};

} // namespace companion
