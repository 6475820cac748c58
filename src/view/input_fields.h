// SPDX-License-Identifier: MIT
// The input controls that lie hidden until they are needed: in-place editing of a cell, and the events that keep cell
// and control in step.
#pragma once

#include "text/text.h"

namespace modPDAUI {

struct InputState {
    std::int32_t EditRow = 0; ///< the cell under edit; BeginCellEdit sets both
    std::int32_t EditCol = 0;
    bool InputFocused = false; ///< txtInputField or cboInputField has the focus
    bool TakenAway = false;    ///< the box was closed by a change of the record, perhaps under a person's hands
};
inline InputState Input;

/// Lays the text box over a cell of grdMain, with the cell's text in it.
void BeginCellEdit(std::int32_t row, std::int32_t col);

/// Closes the box over a cell as a loss of the focus does, because the grid is about to hold another record or screen:
/// what is typed from then on must not go into that. The grid has the focus afterwards. Whether a box was open; the box
/// of a prompt stays.
bool CloseCellEdit();

bool AnyInputFieldVisible();

/// Tells the current screen that an input field has closed, and with what text in the cell under edit.
void CellEdited(const Text& text);

void TextFieldGotFocus();
void TextFieldChanged(); ///< the cell follows each keystroke
void TextFieldLostFocus();
void ComboFieldGotFocus();
void ComboFieldLostFocus();

} // namespace modPDAUI
