// SPDX-License-Identifier: MIT
// The preferences list, whose rows are commands, and what the small ones do.
#pragma once

namespace modQuorin {

void FillPreferences();

/// The storage volume may have changed: the paths are computed again.
bool LeavePreferences();

/// The next larger font size of the grids, in steps of 6 at least; above 30 it starts again at 5.
void ZoomGridFont();
void SaveFontSize();

/// Turns row colours on or off.
void ToggleColour();

/// Asks for the name or number of a port that the list does not offer.
void EnterSerialId();

} // namespace modQuorin
