// SPDX-License-Identifier: MIT
// How a key passes through the form, whatever device it comes from. It is for the control that has the focus when it
// goes down, or for grdMain if none has (Focus::HolderOr), and acts on it only if that is still so when KeyDownPasses
// returns. Where DrawnGrid::TurnsPages is set, a page key acts on grdMain whatever has the focus.
#pragma once

#include "backends/grid/drawn_grid.h"
#include "backends/loop/focus.h"
#include "src/app/keys.h"
#include "src/view/platform/keys.h"

#include <cstdint>

namespace backends {

/// True if the key writes a character: codes 8, 9, 13, 27, 32 and 41 to 126. The codes from 33 to 40 are the page, home
/// and arrow keys, which write nothing.
bool IsCharacter(std::int32_t keyCode);

bool IsPageKey(std::int32_t keyCode);

/// Raises key down and, if the code is a character, key press. Returns true if the form leaves the key to the control.
bool KeyDownPasses(std::int32_t keyCode);

void RaiseKeyUp(std::int32_t keyCode);

/// True if the key is Enter and answers the prompt: its field has one line and the focus. In each back-end the controls
/// have the form's names.
template <class BackEndControls>
bool AnswersPrompt(const BackEndControls& of, std::int32_t keyCode) {
    const FocusTarget* const holder = of.focus.Holder();
    const bool isLine = (holder == &of.txtInputField && !of.txtInputField.MultiLine()) || holder == &of.cboInputField;
    return platform::Key{keyCode} == platform::Key::Enter && isLine && modQuorin::EnterAnswersPrompt();
}

/// Home and End: true if the first or the last row may be selected. Only on lists in which the highlight is a mere
/// mark: moving it in the list of ports would store another port.
bool HasEndsToSelect(const DrawnGrid& grid);
void SelectEnd(DrawnGrid& grid, bool isFirst);

} // namespace backends
