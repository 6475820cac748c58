// SPDX-License-Identifier: MIT
// Saves the record on the screen when the program can't continue: otherwise, what was typed or measured since the last
// save would be lost.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace modQuorin {

struct RescueState {
    bool RecordRescued = false; ///< a rescue was tried, which is done once a run. RescueRecord writes it
};
inline RescueState Rescue;

/// True if a record that differs from its file is on the screen, or under a prompt.
bool RecordIsUnsaved();

/// Returns the texts of the record's rows as the screen shows them, or as it did before a prompt covered them.
/// REQUIRES: a record is on the screen, or under a prompt.
std::vector<Text> TextsOfRecord();

/// True if there is such a record and it can be saved now, because no storage operation is in progress.
bool RecordToRescue();

/// Saves that record, once a run; does nothing if there is none. If a prompt covers the record's grid, the texts of the
/// covered grid are saved. Reports a failure as any save does, and also the values for which the file has no field.
void RescueRecord();

} // namespace modQuorin
