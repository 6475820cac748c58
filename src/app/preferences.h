// SPDX-License-Identifier: MIT
// The preferences list, whose rows are commands, and the routines of the small commands.
#pragma once

namespace modQuorin {

void FillPreferences();

/// The storage volume may have changed, so the paths are computed again.
bool LeavePreferences();

/// Sets the next larger font size of the grids, in steps of at least 6; above 30 it starts again at 5.
void ZoomGridFont();
void SaveFontSize();

/// Turns the row colours on or off.
void ToggleColour();

/// Asks for the name or number of a port that is not in the list.
void EnterSerialId();

} // namespace modQuorin
