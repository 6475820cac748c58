// SPDX-License-Identifier: MIT
// How a key passes through the form, whatever device it comes from. It is for the control that has the focus when it
// goes down, or for grdMain if none has (Focus::HolderOr), and acts on it only if that is still so when KeyDownPasses
// returns. Where DrawnGrid::TurnsPages is set, a page key acts on grdMain whatever has the focus.
#pragma once

#include <cstdint>

namespace backends {

/// True if the key writes a character: codes 8, 9, 13, 27, 32 and 41 to 126. The codes from 33 to 40 are the page, home
/// and arrow keys, which write nothing.
bool IsCharacter(std::int32_t keyCode);

bool IsPageKey(std::int32_t keyCode);

/// Raises key down and, if the code is a character, key press. Returns true if the form leaves the key to the control.
bool KeyDownPasses(std::int32_t keyCode);

void RaiseKeyUp(std::int32_t keyCode);

} // namespace backends
