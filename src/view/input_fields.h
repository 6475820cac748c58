// SPDX-License-Identifier: MIT
// The input controls that lie hidden until they are needed: in-place editing of a cell, and the events that keep cell
// and control in step.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/controls.h"

namespace modPDAUI {

struct InputState {
    std::int32_t EditRow = 0; ///< the cell under edit; BeginCellEdit sets both
    std::int32_t EditCol = 0;
    platform::Box CellBox;     ///< where that cell stood when the box was laid over it
    bool InputFocused = false; ///< txtInputField or cboInputField has the focus
    bool TakenAway = false;    ///< the box was closed by a change of the record, perhaps under a person's hands
};
inline InputState Input;

/// Called at each change of the visible text box, on every screen. Start-up sets it: the record on the screen differs
/// differs from its file then, of which nothing is known here.
inline void (*FieldChanged)() = nullptr;

/// Lays the text box over a cell of grdMain, with the cell's text in it.
void BeginCellEdit(std::int32_t row, std::int32_t col);

/// The box has been laid over the cell under edit as the cell stands now.
void NoteCellBox();

/// Lays the box over its cell anew where the cell has moved or grown under it; closes it, with its text in the cell,
/// when its row has left the page.
void KeepFieldOverCell();

/// Gives the focus back to the field of a prompt, which nothing but the end of the prompt may take it from.
void FocusPromptField();

/// Closes the box over a cell as a loss of the focus does, because the grid is about to hold another record or screen:
/// what is typed from then on must not go into that. The grid has the focus afterwards. Whether a box was open; the box
/// of a prompt stays.
bool CloseCellEdit();

bool AnyInputFieldVisible();

/// Whether the screen is the prompt's, where a field stands in the place of grdMain.
bool OnPromptScreen();

/// Tells the current screen that an input field has closed, and with what text in the cell under edit.
void CellEdited(const Text& text);

void TextFieldGotFocus();
void TextFieldChanged(); ///< the cell follows each keystroke
void TextFieldLostFocus();
void ComboFieldGotFocus();
void ComboFieldLostFocus();

} // namespace modPDAUI
