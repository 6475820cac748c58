// SPDX-License-Identifier: MIT
// Brings the record on the screen to disk where the program can't go on: what was typed or measured since the last save
// would be gone with it.
#pragma once

namespace modQuorin {

struct RescueState {
    bool RecordRescued = false; ///< it was tried: once a run. RescueRecord writes it
};
inline RescueState Rescue;

/// Whether there is a record on the screen, under a prompt or not, that differs from its file.
bool RecordIsUnsaved();

/// Whether it may be saved just now as well: no operation of the storage is under way.
bool RecordToRescue();

/// Saves that record, once a run; nothing where there is none. Its texts are those of its own grid, also where a prompt
/// has taken the grid. A failure is told as that of any save, and so is what the file has no place for.
void RescueRecord();

} // namespace modQuorin
